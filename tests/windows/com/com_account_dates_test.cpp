// Last dates in documents that hosts really hold: the platform's own, and ours.
#include "contracts/scratch_folder.h"
#include "exchange/account_dates.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_late_bound.h"
#include "fakes/scripted_watcher.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/base/wide.h"
#include "windows/com/com_support.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/quorvantisimage.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;
using windows::com::DispatchObject;

class HostsDates : public testing::Test {
protected:
    HostsDates() {
        host->addProperty("gQuorXMLpath", folder);
        host->addProperty("gProfileNumber", "4711");
        host->addProperty("Branch", "B0");
    }

    // Sets dates in the document, reads them from it, and from the file that it saved itself as.
    void expectKeepsDates(const base::ObjectRef& document) {
        ASSERT_EQ(document->call("loadXML",
                                 {"<quorvantis name=\"caf\xC3\xA9\"><accountdates old=\"20250101\"/></quorvantis>"}),
                  base::Variant(true));
        host->addProperty("gdomquorvantis", document);
        exchange::Session session;
        session.Globals = host;
        const exchange::AccountDates dates(watcher, watcher, clock, session);
        dates.SetLastDate("prices", "no");
        dates.SetLastDate("orders", "yes");
        clock.set({2026, 11, 16, 9, 0, 0});
        dates.SetLastDate("orders", "yes");
        EXPECT_EQ(dates.GetLastDate("prices", "no"), "20261115");
        EXPECT_EQ(dates.GetLastDate("orders", "yes"), "20261116");
        EXPECT_EQ(dates.GetLastDate("orders", "no"), " ");
        EXPECT_EQ(dates.GetLastDate("old", "no"), "20250101");

        xml::XmlDocument saved;
        ASSERT_TRUE(saved.load(files.readFile(folder + "quorvantis.xml"))) << saved.parseError();
        EXPECT_EQ(saved.documentElement().xml(),
                  "<quorvantis name=\"caf\xC3\xA9\"><accountdates old=\"20250101\" prices=\"20261115\">"
                  "<accountdate number=\"B04711\" orders=\"20261116\"/></accountdates></quorvantis>");

        files.removeFile(folder + "quorvantis.xml");
        files.createFolder(folder + "quorvantis.xml"); // in the way of the next save
        watcher.whenReported("Error in SetLastDate:"); // and whatever the system's own library says
        dates.SetLastDate("prices", "no");
        host->addProperty("gdomquorvantis"); // let go of it while its library is there
    }

    ComApartment apartment;
    contracts::ScratchFolder scratch;
    std::string folder = windows::fromWide(scratch.path().wstring()) + "\\";
    windows::WindowsFileSystem files;
    fakes::ScriptedWatcher watcher;
    fakes::FakeClock clock;
    std::shared_ptr<fakes::FakeLateBound> host = std::make_shared<fakes::FakeLateBound>();
};

TEST_F(HostsDates, AreKeptInThePlatformsDocument) {
    CLSID clsid{};
    ASSERT_EQ(CLSIDFromProgID(L"Msxml2.DOMDocument", &clsid), S_OK);
    ComPtr<IDispatch> document;
    ASSERT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&document)), S_OK);
    expectKeepsDates(std::make_shared<DispatchObject>(document));
}

TEST_F(HostsDates, AreKeptInADocumentOfOurs) {
    const LoadedDll dll;
    DispatchObject control(dll.create<IDispatch>(__uuidof(::ucSendReceive)));
    expectKeepsDates(std::get<base::ObjectRef>(control.get("domCommands")));
}

} // namespace
} // namespace com_test
