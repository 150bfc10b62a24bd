// The cabinet reader as an early-bound host uses it: a real cabinet, the DLL as it is, sinks that interfere.
#include "base/runtime_error.h"
#include "contracts/scratch_folder.h"
#include "fakes/stored_cabinet.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/base/wide.h"
#include "windows/com/automation_text.h"
#include "windows/com/com_support.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/event_sink.h"
#include "windows/com/quorvantisimage.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;
using windows::com::Bstr;

enum Event : DISPID { kFileFound = 1, kBeforeExtract = 2, kAfterExtract = 3 };

// "800A0002|source|description" of a call that has just failed, "" of one that succeeded.
std::string errorOf(HRESULT result) {
    if (SUCCEEDED(result)) {
        return {};
    }
    char number[9];
    std::snprintf(number, sizeof number, "%08lX", static_cast<unsigned long>(result));
    ComPtr<IErrorInfo> info;
    Bstr source;
    Bstr description;
    if (GetErrorInfo(0, &info) == S_OK) {
        info->GetSource(source.out());
        info->GetDescription(description.out());
    }
    return std::string(number) + "|" + source.text() + "|" + description.text();
}

class ComCabinet : public testing::Test {
protected:
    ComCabinet() {
        files.replaceFile(in("x.cab"),
                          fakes::storedCabinet({{"a.txt", "top"}, {"sub\\b.txt", "below", 0x0021, 0x6000}}));
        ComPtr<IConnectionPointContainer> container;
        cabinet.As(&container);
        container->FindConnectionPoint(__uuidof(__clsCABFile), &point);
        cabinet->put_CabName(Bstr(in("x.cab")).get());
    }

    [[nodiscard]] std::string in(const std::string& name) const {
        return windows::fromWide(scratch.path().wstring()) + "\\" + name;
    }
    HRESULT extract(const std::string& folder) {
        VARIANT_BOOL succeeded = VARIANT_FALSE;
        const HRESULT result = cabinet->Extract(Bstr("").get(), Bstr(in(folder)).get(), Bstr("").get(), &succeeded);
        EXPECT_EQ(succeeded, SUCCEEDED(result) ? VARIANT_TRUE : VARIANT_FALSE);
        return result;
    }
    void connect(std::string name, EventSink::Handler handler) {
        com_test::connect(*point.Get(), std::move(name), heard, std::move(handler));
    }

    ComApartment apartment;
    contracts::ScratchFolder scratch;
    windows::WindowsFileSystem files;
    LoadedDll dll;
    ComPtr<_clsCABFile> cabinet = dll.create<_clsCABFile>(__uuidof(clsCABFile));
    ComPtr<IConnectionPoint> point;
    Words heard;
};

TEST_F(ComCabinet, CountsListsAndExtracts) {
    Bstr name;
    LONG count = 0;
    VARIANT_BOOL present = VARIANT_FALSE;
    EXPECT_EQ(cabinet->get_CabName(name.out()), S_OK);
    EXPECT_EQ(name.text(), in("x.cab"));
    EXPECT_EQ(cabinet->get_FileCount(&count), S_OK);
    EXPECT_EQ(cabinet->get_FileCount(&count), S_OK);
    EXPECT_EQ(count, 4) << "the count goes on";
    EXPECT_EQ(cabinet->SetuAPIisPresent(&present), S_OK);
    EXPECT_EQ(present, VARIANT_TRUE);

    Bstr listing;
    EXPECT_EQ(cabinet->GetXML(Bstr("B.TXT").get(), listing.out()), S_OK);
    EXPECT_EQ(listing.text().find("<?xml version=\"1.0\"?><CABFILE CABFILENAME = '" + in("x.cab") +
                                  "'><FILES><FILE><FULLNAME>sub\\b.txt</FULLNAME>"),
              0U)
        << listing.text();

    VARIANT_BOOL succeeded = VARIANT_FALSE;
    EXPECT_EQ(cabinet->Extract(Bstr("sub\\b.txt").get(), Bstr(in("out")).get(), Bstr("c.txt").get(), &succeeded), S_OK);
    EXPECT_EQ(succeeded, VARIANT_TRUE);
    EXPECT_EQ(files.readFile(in("out\\c.txt")), "below");
    EXPECT_FALSE(files.fileExists(in("out\\a.txt")));
}

TEST_F(ComCabinet, EventsCarryTheFilesAndASinkCanSkipOne) {
    std::string found;
    connect("first ", [&](DISPID event, DISPPARAMS& arguments, EXCEPINFO&) {
        const VARIANTARG* const last = arguments.rgvarg; // the last argument comes first
        if (event == kFileFound) {
            EXPECT_EQ(arguments.cArgs, 4U);
            EXPECT_EQ(V_VT(&last[3]), VT_BSTR);
            EXPECT_EQ(V_VT(&last[2]), VT_DATE);
            EXPECT_EQ(V_VT(&last[1]), VT_I4);
            EXPECT_EQ(V_VT(&last[0]), VT_BSTR);
            found += windows::com::fromBstr(V_BSTR(&last[3])) + "|" + std::to_string(V_DATE(&last[2])) + "|" +
                     std::to_string(V_I4(&last[1])) + "|" + windows::com::fromBstr(V_BSTR(&last[0])) + "\n";
        } else if (event == kBeforeExtract) {
            EXPECT_EQ(arguments.cArgs, 2U);
            EXPECT_EQ(V_VT(&last[0]), VT_BYREF | VT_BOOL);
            EXPECT_EQ(*V_BOOLREF(&last[0]), VARIANT_FALSE);
            const bool isUnwanted = windows::com::fromBstr(V_BSTR(&last[1])) == "a.txt";
            *V_BOOLREF(&last[0]) = isUnwanted ? VARIANT_TRUE : VARIANT_FALSE;
        } else {
            EXPECT_EQ(windows::com::fromBstr(V_BSTR(&last[0])), in("out\\sub\\b.txt"));
        }
        return S_OK;
    });
    Words cancelled;
    connect("second ", [&](DISPID event, DISPPARAMS& arguments, EXCEPINFO&) {
        if (event == kBeforeExtract) {
            cancelled.push_back(*V_BOOLREF(&arguments.rgvarg[0]) == VARIANT_TRUE ? "cancelled" : "wanted");
        }
        return S_OK;
    });
    VARIANT_BOOL succeeded = VARIANT_FALSE;
    EXPECT_EQ(cabinet->GetInfo(Bstr("").get(), &succeeded), S_OK);
    EXPECT_EQ(succeeded, VARIANT_TRUE);
    EXPECT_EQ(found, "a.txt|46341.797361|3|\n"
                     "b.txt|29221.500000|5|sub\\\n");
    heard.clear();
    EXPECT_EQ(extract("out"), S_OK);
    EXPECT_EQ(heard, (Words{"first 2", "second 2", "first 2", "second 2", "first 3", "second 3"}));
    EXPECT_EQ(cancelled, (Words{"cancelled", "wanted"})) << "a later sink sees what an earlier one has set";
    EXPECT_FALSE(files.fileExists(in("out\\a.txt")));
    EXPECT_EQ(files.readFile(in("out\\sub\\b.txt")), "below");
}

TEST_F(ComCabinet, ErrorsHaveTheirOwnSourceAndNumbers) {
    const std::string missing = "The system cannot find the file specified.";
    const std::string unset = "You must set the CabName property before taking any action on the CabFile object.";
    Bstr listing;
    LONG count = 1;
    EXPECT_EQ(cabinet->put_CabName(Bstr(in("missing.cab")).get()), S_OK);
    EXPECT_EQ(errorOf(cabinet->get_FileCount(&count)), "800A0002|CabFile|" + missing);
    EXPECT_EQ(count, 0);
    EXPECT_EQ(errorOf(extract("out")), "800A0002|CabFile|clsCabFile.Extract: " + missing);
    EXPECT_EQ(cabinet->put_CabName(nullptr), S_OK);
    EXPECT_EQ(errorOf(cabinet->GetXML(nullptr, listing.out())), "800407A4|CabFile|" + unset);
    EXPECT_EQ(errorOf(extract("out")), "800407A4|CabFile|clsCabFile.Extract: " + unset);
    EXPECT_EQ(cabinet->get_FileCount(nullptr), E_POINTER);
    try {
        windows::com::DispatchObject(cabinet).call("Extract", {std::string(), std::string(), std::string()});
        ADD_FAILURE() << "no error";
    } catch (const base::RuntimeError& error) {
        EXPECT_EQ(error.number(), -2147219548);
        EXPECT_EQ(error.source(), "CabFile");
    }
}

TEST_F(ComCabinet, AFailingSinkEndsTheCallWithItsOwnErrorAndTheNextCallStartsAfresh) {
    bool fails = true;
    connect("s", [&](DISPID event, DISPPARAMS&, EXCEPINFO& exception) {
        if (event != kAfterExtract || !fails) {
            return S_OK;
        }
        exception.wCode = 1234;
        exception.bstrSource = windows::com::newBstr("Host");
        exception.bstrDescription = windows::com::newBstr("The sink says no");
        return DISP_E_EXCEPTION;
    });
    EXPECT_EQ(errorOf(extract("out")), "800A04D2|Host|The sink says no");
    EXPECT_EQ(heard, (Words{"s2", "s3"}));
    EXPECT_TRUE(files.fileExists(in("out\\a.txt")));
    EXPECT_FALSE(files.folderExists(in("out\\sub")));
    fails = false;
    EXPECT_EQ(extract("out"), S_OK);
    EXPECT_EQ(files.readFile(in("out\\sub\\b.txt")), "below");
}

TEST_F(ComCabinet, ASinkMayReleaseTheObjectAndTheSlotDoesNotKeepTheDllLoaded) {
    _clsCABFile* const borrowed = cabinet.Get();
    connect("s", [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        cabinet.Reset();
        return S_OK;
    });
    VARIANT_BOOL succeeded = VARIANT_FALSE;
    EXPECT_EQ(borrowed->Extract(Bstr("").get(), Bstr(in("out")).get(), Bstr("").get(), &succeeded), S_OK);
    EXPECT_EQ(heard, (Words{"s2", "s3", "s2", "s3"})) << "it lives until its method returns";
    ComPtr<IConnectionPointContainer> container;
    EXPECT_EQ(point->GetConnectionPointContainer(&container), RPC_E_DISCONNECTED);
    EXPECT_EQ(dll.canUnloadNow(), S_FALSE);
    point.Reset();
    EXPECT_EQ(dll.canUnloadNow(), S_OK) << "the callback's slot still holds the reader";
}

} // namespace
} // namespace com_test
