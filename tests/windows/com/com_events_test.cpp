// The control's events as sinks of hosts get them, and what sinks can do to it meanwhile.
#include "base/runtime_error.h"
#include "fakes/send_receive_services.h"
#include "windows/com/adopt.h"
#include "windows/com/automation_text.h"
#include "windows/com/com_support.h"
#include "windows/com/dispatch_object.h"
#include "windows/com/event_sink.h"
#include "windows/objects/foreign_document.h"
#include "windows/objects/ucSendReceive_object.h"
#include "windows/objects/xml_document_object.h"

#include <gtest/gtest.h>
#include <olectl.h>

#include <functional>
#include <string>
#include <vector>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;
using windows::com::adopt;
using windows::com::SendReceiveObject;

class Events : public testing::Test {
protected:
    Events() { object->FindConnectionPoint(__uuidof(__ucSendReceive), &point); }

    DWORD connect(std::string name, EventSink::Handler handler = listen) {
        return com_test::connect(*point.Get(), std::move(name), heard, std::move(handler));
    }
    // The events behind the control, for the events that this version of the control does not raise yet.
    windows::com::SendReceiveEvents source() {
        return {
            {static_cast<_ucSendReceive&>(*object.Get()), static_cast<windows::com::ConnectionPoint&>(*point.Get())},
            services.files};
    }

    ComApartment apartment;
    fakes::SendReceiveServices services;
    ComPtr<SendReceiveObject> object = adopt(new SendReceiveObject(services.all));
    ComPtr<IConnectionPoint> point;
    Words heard;
};

TEST_F(Events, ReachEverySinkInTheOrderOfConnectionUntilItLeaves) {
    const DWORD first = connect("a");
    connect("b");
    object->control().cmdCancel_Click();
    EXPECT_EQ(point->Unadvise(first), S_OK);
    EXPECT_EQ(point->Unadvise(first), CONNECT_E_NOCONNECTION);
    object->control().cmdCancel_Click();
    EXPECT_EQ(heard, (Words{"a3", "b3", "b3"}));

    auto events = source();
    heard.clear();
    events.SendReceiveCompleted();
    events.CloseQuorVantis();
    events.OpenfrmOptions("http://supplier/");
    events.RegisterServer("a.ocx");
    events.UnregisterServer("a.ocx");
    EXPECT_EQ(heard, (Words{"b4", "b5", "b6", "b7", "b8"}));
}

TEST_F(Events, ASinkWithoutAHandlerIsPassedOverAndAFailingOneIsAnError) {
    struct Row {
        const char* name;
        HRESULT result;
        const char* box; // none: no error
    };
    const Row rows[] = {
        {"no member", DISP_E_MEMBERNOTFOUND, nullptr},
        {"not implemented", E_NOTIMPL, nullptr},
        {"gone", RPC_E_DISCONNECTED, nullptr},
        {"positive results are successes", S_FALSE, nullptr},
        {"own words", DISP_E_EXCEPTION, "Error in cmdCancel_Click:The sink says no"},
        {"bad argument", DISP_E_TYPEMISMATCH, "Error in cmdCancel_Click:Type mismatch"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const DWORD failing = connect("x", [&](DISPID, DISPPARAMS&, EXCEPINFO& exception) {
            exception.wCode = 1234;
            exception.bstrDescription = windows::com::newBstr("The sink says no");
            return row.result;
        });
        const DWORD after = connect("y");
        heard.clear();
        if (row.box != nullptr) {
            services.desktop.whenAsked(row.box);
        }
        object->control().cmdCancel_Click();
        EXPECT_EQ(heard, row.box == nullptr ? (Words{"x3", "y3"}) : Words{"x3"});
        point->Unadvise(failing);
        point->Unadvise(after);
    }
}

TEST_F(Events, ASinkMayLeaveJoinOthersCallTheControlAndLetGoOfIt) {
    DWORD second = 0;
    connect("a", [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        EXPECT_EQ(object->SetDownloadVisible(VARIANT_TRUE), S_OK);
        EXPECT_EQ(object->put_domCommands(nullptr), S_OK);
        point->Unadvise(second);
        connect("new");
        object.Reset();
        return S_OK;
    });
    second = connect("b");
    connect("c");
    const auto control = object->control().shared_from_this();
    control->cmdCancel_Click();
    EXPECT_EQ(heard, (Words{"a3", "c3"}));
    ComPtr<IConnectionPointContainer> container;
    EXPECT_EQ(point->GetConnectionPointContainer(&container), RPC_E_DISCONNECTED) << "the control's object is gone";
    control->cmdCancel_Click();
    EXPECT_EQ(heard, (Words{"a3", "c3"}));
    DWORD cookie = 0;
    const auto late = adopt(new EventSink("late", heard, listen));
    EXPECT_EQ(point->Advise(late.Get(), &cookie), CONNECT_E_CANNOTCONNECT);
}

TEST_F(Events, TheRequestCanBeExtendedOrReplaced) {
    const auto request = std::make_shared<xml::XmlDocument>();
    ASSERT_TRUE(request->loadXml("<commands/>"));
    auto events = source();
    const auto start = [&](const EventSink::Handler& handler) {
        const DWORD cookie = connect("s", handler);
        std::string name = "send";
        auto sent = request;
        events.DownloadStart(name, sent);
        point->Unadvise(cookie);
        return std::make_pair(name, sent);
    };
    // In the order of automation: the last argument first.
    const auto setName = [](DISPPARAMS& arguments) {
        ASSERT_EQ(V_VT(&arguments.rgvarg[1]), VT_BYREF | VT_BSTR);
        SysReAllocString(V_BSTRREF(&arguments.rgvarg[1]), L"changed");
    };
    const auto [name, extended] = start([&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(arguments.cArgs, 2U);
        EXPECT_EQ(V_VT(&arguments.rgvarg[0]), VT_BYREF | VT_DISPATCH);
        setName(arguments);
        windows::com::fromHost(*V_DISPATCHREF(&arguments.rgvarg[0])).document->documentElement().setText("payload");
        return S_OK;
    });
    EXPECT_EQ(name, "changed");
    EXPECT_EQ(extended, request);
    EXPECT_EQ(request->xml(), "<commands>payload</commands>");

    const auto putInPlace = [&](IDispatch* other) {
        return start([&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
                   IDispatch** const place = V_DISPATCHREF(&arguments.rgvarg[0]);
                   (*place)->Release();
                   *place = ComPtr<IDispatch>(other).Detach();
                   return S_OK;
               })
            .second;
    };
    CLSID platform{};
    ComPtr<IDispatch> foreign;
    CLSIDFromProgID(L"Msxml2.DOMDocument", &platform);
    ASSERT_EQ(CoCreateInstance(platform, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&foreign)), S_OK);
    windows::com::DispatchObject(foreign).call("loadXML", {std::string("<other/>")});
    EXPECT_EQ(putInPlace(foreign.Get())->xml(), "<other/>");
    const auto own = std::make_shared<xml::XmlDocument>();
    EXPECT_EQ(putInPlace(windows::com::makeXmlDocument(own, services.files).Get()), own);
    EXPECT_EQ(putInPlace(nullptr), request) << "Nothing is no other request";
}

TEST_F(Events, ResultsAndCommandComeAsObjects) {
    xml::XmlDocument commands;
    ASSERT_TRUE(commands.loadXml("<commands><command name='a'/></commands>"));
    const auto results = std::make_shared<xml::XmlDocument>();
    ASSERT_TRUE(results->loadXml("<results/>"));
    connect("s", [&](DISPID, DISPPARAMS& arguments, EXCEPINFO&) {
        EXPECT_EQ(arguments.cArgs, 3U);
        EXPECT_EQ(windows::com::fromHost(V_DISPATCH(&arguments.rgvarg[0])).document, results);
        windows::com::nodeOf(V_DISPATCH(&arguments.rgvarg[1])).setAttribute("done", "yes");
        EXPECT_EQ(windows::com::fromBstr(*V_BSTRREF(&arguments.rgvarg[2])), "a");
        return S_OK;
    });
    std::string name = "a";
    source().DownloadComplete(name, commands.documentElement().firstChild(), results);
    EXPECT_EQ(commands.xml(), "<commands><command name=\"a\" done=\"yes\"/></commands>");
}

TEST_F(Events, ConnectionsCanBeListedAndBadOnesAreRefused) {
    const DWORD cookie = connect("a");
    ComPtr<IEnumConnections> connections;
    ASSERT_EQ(point->EnumConnections(&connections), S_OK);
    CONNECTDATA data{};
    ULONG fetched = 0;
    EXPECT_EQ(connections->Next(1, &data, &fetched), S_OK);
    EXPECT_EQ(data.dwCookie, cookie);
    data.pUnk->Release();
    EXPECT_EQ(connections->Next(1, &data, &fetched), S_FALSE);

    ComPtr<IEnumConnectionPoints> points;
    ComPtr<IConnectionPoint> listed;
    ASSERT_EQ(object->EnumConnectionPoints(&points), S_OK);
    EXPECT_EQ(points->Next(1, &listed, nullptr), S_OK);
    EXPECT_EQ(listed, point);
    EXPECT_EQ(object->FindConnectionPoint(IID_IDispatch, &listed), CONNECT_E_NOCONNECTION);

    DWORD none = 0;
    ComPtr<IUnknown> noDispatch;
    CreateErrorInfo(reinterpret_cast<ICreateErrorInfo**>(noDispatch.GetAddressOf()));
    EXPECT_EQ(point->Advise(noDispatch.Get(), &none), CONNECT_E_CANNOTCONNECT);
    EXPECT_EQ(point->Advise(nullptr, &none), E_POINTER);
    IID iid{};
    EXPECT_EQ(point->GetConnectionInterface(&iid), S_OK);
    EXPECT_EQ(iid, __uuidof(__ucSendReceive));
}

} // namespace
} // namespace com_test
