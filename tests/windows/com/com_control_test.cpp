// The send/receive control as an automation object: its objects, its pictures, what is not part of it yet.
#include "contracts/late_bound_subjects.h"
#include "fakes/fake_host_document.h"
#include "fakes/send_receive_services.h"
#include "windows/com/adopt.h"
#include "windows/com/automation_text.h"
#include "windows/com/com_support.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/host_object.h"
#include "windows/objects/foreign_document.h"
#include "windows/objects/ucSendReceive_object.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include <string>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;
using windows::com::adopt;
using windows::com::Bstr;
using windows::com::SendReceiveObject;

constexpr HRESULT kObjectNotSet = static_cast<HRESULT>(0x800A005B);

class Control : public testing::Test {
protected:
    static ComPtr<IDispatch> globals() {
        const auto fake = std::make_shared<fakes::FakeLateBound>();
        fake->addProperty("gWebService", std::string("Supplier"));
        fake->addProperty("gSettingString", std::string("Shop"));
        return makeHostObject(fake, {L"gWebService", L"gSettingString"});
    }
    static ComPtr<IDispatch> platformDocument() {
        CLSID clsid{};
        ComPtr<IDispatch> document;
        CLSIDFromProgID(L"Msxml2.DOMDocument", &clsid);
        EXPECT_EQ(CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&document)), S_OK);
        return document;
    }
    [[nodiscard]] std::size_t rowsAfterLoading() const {
        EXPECT_EQ(object->LoadCommands(), S_OK);
        return object->control().lvCommands.rowCount();
    }

    ComApartment apartment;
    fakes::SendReceiveServices services;
    ComPtr<SendReceiveObject> object = adopt(new SendReceiveObject(services.all));
};

TEST_F(Control, ObjectsComeBackAsTheyWereGiven) {
    const auto host = globals();
    ComPtr<IDispatch> read;
    EXPECT_EQ(object->get_Globals(&read), S_OK);
    EXPECT_FALSE(read);
    EXPECT_EQ(object->putref_Globals(host.Get()), S_OK);
    EXPECT_EQ(object->put_Account(host.Get()), S_OK);
    EXPECT_EQ(object->get_Globals(&read), S_OK);
    EXPECT_EQ(read, host);
    EXPECT_EQ(object->put_Globals(nullptr), S_OK);
    EXPECT_EQ(object->get_Globals(&read), S_OK);
    EXPECT_FALSE(read);
    EXPECT_EQ(object->get_Account(&read), S_OK);
    EXPECT_EQ(read, host);
}

TEST_F(Control, AHostsOwnDocumentMayBeFilledAfterItWasHandedOver) {
    object->put_Globals(globals().Get());
    const auto document = platformDocument();
    ASSERT_EQ(object->putref_domCommands(document.Get()), S_OK);
    ComPtr<IDispatch> read;
    EXPECT_EQ(object->get_domCommands(&read), S_OK);
    EXPECT_EQ(read, document);
    EXPECT_EQ(rowsAfterLoading(), 0U) << "a document without commands";
    windows::com::DispatchObject(document).call(
        "loadXML", {std::string("<c><command name='a' show='yes'/><command name='b' show='yes'/></c>")});
    EXPECT_EQ(rowsAfterLoading(), 2U);
}

TEST_F(Control, BringsADocumentOfItsOwn) {
    object->put_Globals(globals().Get());
    ComPtr<IDispatch> read;
    ComPtr<_XmlDocument> document;
    ASSERT_EQ(object->get_domCommands(&read), S_OK);
    ASSERT_EQ(read.As(&document), S_OK);
    VARIANT_BOOL done = VARIANT_FALSE;
    EXPECT_EQ(document->loadXML(Bstr("<c><command name='a' show='yes'/></c>").get(), &done), S_OK);
    EXPECT_EQ(rowsAfterLoading(), 1U);
    EXPECT_EQ(object->put_domCommands(read.Get()), S_OK) << "back to where it came from";
    EXPECT_EQ(rowsAfterLoading(), 1U);
}

TEST_F(Control, WhatIsNoDocumentIsRefusedAndTheOldOneStays) {
    const auto fake = std::make_shared<fakes::FakeLateBound>();
    const auto noDocument = makeHostObject(fake, {L"xml"});
    ComPtr<IDispatch> before;
    ComPtr<IDispatch> after;
    object->get_domCommands(&before);
    EXPECT_EQ(object->put_domCommands(noDocument.Get()), static_cast<HRESULT>(0x800A01B6)) << "438";
    fake->addProperty("xml", std::string("<c>"));
    EXPECT_EQ(object->put_domCommands(noDocument.Get()), E_FAIL);
    object->get_domCommands(&after);
    EXPECT_EQ(after, before);
}

TEST_F(Control, ErrorsOfTheHostsObjectsAreShownInTheirWords) {
    const auto fake = contracts::makeFakeHostObject();
    fake->addProperty("gSettingString", std::string("Shop"));
    fake->addProperty("gWebService", std::string("Supplier"));
    fake->addProperty("xml", std::string("<c/>"));
    const auto host = makeHostObject(fake, {L"gSettingString", L"gWebService", L"xml"});
    object->put_Globals(host.Get());
    ASSERT_EQ(object->put_domCommands(host.Get()), S_OK);
    const auto expectBox = [&](const std::string& description) {
        services.desktop.whenAsked("Error in LoadCommands:" + description);
        EXPECT_EQ(object->LoadCommands(), S_OK);
    };
    fake->addProperty("xml", base::Null{});
    expectBox("Invalid use of Null");
    fake->failOn("xml", 1234);
    expectBox("Host says no");
    fake->failOn("gSettingString", 1234);
    expectBox("Host says no");
}

TEST_F(Control, PicturesAreObjectsOrFilesAndAnythingElseClearsThem) {
    services.pictures.add("C:\\logo.png", 30, 20);
    VARIANT value;
    VariantInit(&value);
    const auto shown = [&] {
        EXPECT_EQ(object->UserControl_SetImage(value), S_OK);
        return object->control().picImage.picture();
    };
    const Bstr file("C:\\logo.png");
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = file.get();
    ASSERT_TRUE(shown());
    EXPECT_EQ(shown()->width, 30);
    V_VT(&value) = VT_EMPTY;
    EXPECT_FALSE(shown());

    // A bitmap of four pixels: red, green / blue, white; the lowest row comes first.
    const std::uint32_t colours[] = {0x0000FF, 0xFFFFFF, 0xFF0000, 0x00FF00};
    PICTDESC description{};
    description.cbSizeofstruct = sizeof description;
    description.picType = PICTYPE_BITMAP;
    BITMAPINFO info{};
    info.bmiHeader = {sizeof info.bmiHeader, 2, 2, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    void* bits = nullptr;
    description.bmp.hbitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0);
    std::copy(std::begin(colours), std::end(colours), static_cast<std::uint32_t*>(bits));
    ComPtr<IDispatch> picture;
    ASSERT_EQ(
        OleCreatePictureIndirect(&description, IID_IDispatch, TRUE, reinterpret_cast<void**>(picture.GetAddressOf())),
        S_OK);
    V_VT(&value) = VT_DISPATCH;
    V_DISPATCH(&value) = picture.Get();
    ASSERT_TRUE(shown());
    EXPECT_EQ(shown()->width, 2);
    EXPECT_EQ(shown()->pixels, (std::vector<std::uint32_t>{0xFFFF0000, 0xFF00FF00, 0xFF0000FF, 0xFFFFFFFF}));
    V_DISPATCH(&value) = nullptr;
    EXPECT_FALSE(shown());
    const auto noPicture = globals();
    V_DISPATCH(&value) = noPicture.Get();
    EXPECT_FALSE(shown());
}

TEST_F(Control, WhatGoesWrongInAnUpgradeReachesTheCaller) {
    VARIANT_BOOL flag = VARIANT_TRUE;
    VARIANT nothing;
    VariantInit(&nothing);
    const Bstr text("x");
    IDispatch* results = nullptr;
    EXPECT_EQ(object->SendReceive(nullptr, text.get(), &results, nullptr, nullptr, text.get(), 0, 0, &flag), E_POINTER);
    EXPECT_EQ(object->DownloadUpgrade(&results, text.get(), text.get(), &flag), kObjectNotSet);
    EXPECT_EQ(object->DownloadUpgrade(nullptr, text.get(), text.get(), &flag), kObjectNotSet);
    services.files.addFile("C:\\quorvantissetup.exe", "MZ");
    services.desktop.whenAsked("A. You need to upgrade QuorVantis: \r\n  1) Press OK to start the upgrade.\r\n"
                               "  2) When the upgrade is complete QuorVantis will re-start.");
    EXPECT_EQ(object->RunSetup(nothing), kObjectNotSet) << "there is no host to tell";
    EXPECT_TRUE(services.programs.started.empty());
}

TEST_F(Control, AnExchangeStampsTheHostsOwnRequest) {
    const auto host = std::make_shared<fakes::FakeLateBound>();
    for (const char* name : {"gWebService", "gSettingString", "gQuorVantisPath"}) {
        host->addProperty(name, std::string("Shop"));
    }
    host->addProperty("gdomquorvantis",
                      base::ObjectRef(std::make_shared<fakes::FakeHostDocument>(
                          services.files, "<quorvantis><accountdates prices='20261101'/></quorvantis>")));
    object->control().session.Globals = host;
    const auto send = [this](IDispatch* request) {
        BSTR url = SysAllocString(L"http://supplier/");
        IDispatch* results = nullptr;
        VARIANT_BOOL succeeded = VARIANT_FALSE;
        services.network.willAnswer("<results/>");
        EXPECT_EQ(object->SendReceive(&url, Bstr("POST").get(), &results, request, nullptr, nullptr, VARIANT_FALSE,
                                      VARIANT_FALSE, &succeeded),
                  S_OK);
        EXPECT_EQ(succeeded, VARIANT_TRUE);
        SysFreeString(url);
        results->Release();
        return services.network.requests.back().body;
    };
    const std::string stamped =
        "<commands><!--c--><prices name=\"prices\" lastdate=\"20261101\"><command/></prices></commands>";

    const auto document = platformDocument();
    const auto own = std::make_shared<windows::com::DispatchObject>(document);
    own->call("loadXML", {std::string("<commands><!--c--><prices name='prices'><command/></prices></commands>")});
    EXPECT_EQ(send(document.Get()), stamped);
    EXPECT_EQ(windows::com::ForeignDocument(own).read()->xml(), stamped);

    const auto textOnly = std::make_shared<fakes::FakeLateBound>();
    textOnly->addProperty("xml", std::string("<commands><!--c--><prices name='prices'><command/></prices></commands>"));
    EXPECT_EQ(send(makeHostObject(textOnly, {L"xml"}).Get()), stamped);
}

TEST(RegisteredControl, TellsContainersItsClassAndItsEvents) {
    const ComApartment apartment;
    const LoadedDll dll;
    const auto provider = dll.create<IProvideClassInfo2>(__uuidof(ucSendReceive));
    ASSERT_TRUE(provider);
    GUID events{};
    EXPECT_EQ(provider->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
    EXPECT_EQ(events, __uuidof(__ucSendReceive));
    EXPECT_EQ(provider->GetGUID(99, &events), E_INVALIDARG);
    ComPtr<IProvideClassInfo> first;
    ComPtr<ITypeInfo> info;
    ASSERT_EQ(provider.As(&first), S_OK);
    ASSERT_EQ(first->GetClassInfo(&info), S_OK);
    TYPEATTR* attributes = nullptr;
    ASSERT_EQ(info->GetTypeAttr(&attributes), S_OK);
    EXPECT_EQ(attributes->guid, __uuidof(ucSendReceive));
    info->ReleaseTypeAttr(attributes);
}

} // namespace
} // namespace com_test
