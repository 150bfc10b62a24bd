// The control's life in a container: it appears, takes input, and goes, whenever the container wants.
#include "windows/com/event_sink.h"
#include "windows/container/embedded.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>

#include <commctrl.h>

namespace container_test {
namespace {

using Microsoft::WRL::ComPtr;

TEST_F(Embedded, AppearsInTheContainersWindowTakesClicksAndGoes) {
    EXPECT_EQ(container.controlWindow(), nullptr);
    for (const char* const time : {"first", "second"}) {
        SCOPED_TRACE(time);
        container.calls.clear();
        ASSERT_EQ(container.doVerb(OLEIVERB_INPLACEACTIVATE), S_OK);
        EXPECT_EQ(container.calls,
                  (Calls{"CanInPlaceActivate", "OnInPlaceActivate", "GetWindowContext", "ShowObject"}));
        EXPECT_EQ(container.doVerb(OLEIVERB_SHOW), S_OK) << "it is shown already";
        const HWND shown = container.controlWindow();
        ASSERT_NE(shown, nullptr);
        EXPECT_EQ(GetParent(shown), container.window());
        EXPECT_EQ(ListView_GetItemCount(window("lvCommands")), 2);
        engine->session.gCancelled = false;
        engine->lProgress.setText("Ready");
        container.calls.clear();
        person.click(kControl, "cmdCancel");
        container.runUntil([&] { return engine->session.gCancelled; });
        EXPECT_EQ(container.calls, (Calls{"OnUIActivate", "SetActiveObject", "OnFocus got"})) << "clicked into";
        std::wstring status(20, L'\0');
        GetWindowTextW(window("lProgress"), status.data(), 20);
        EXPECT_EQ(std::wstring(status.c_str()), L"Ready");
        container.calls.clear();
        EXPECT_EQ(container.object->Close(OLECLOSE_NOSAVE), S_OK);
        EXPECT_EQ(container.calls, (Calls{"SetActiveObject none", "OnUIDeactivate", "OnInPlaceDeactivate"}));
        EXPECT_FALSE(IsWindow(shown));
    }
}

TEST_F(Embedded, AContainerThatRefusesGetsNoWindow) {
    struct Row {
        const char* refused;
        HRESULT answer;
        HRESULT expected;
        Calls calls;
    };
    const Row rows[] = {
        {"CanInPlaceActivate", S_FALSE, E_FAIL, {"CanInPlaceActivate"}},
        {"OnInPlaceActivate", E_ACCESSDENIED, E_ACCESSDENIED, {"CanInPlaceActivate", "OnInPlaceActivate"}},
        {"GetWindowContext",
         E_UNEXPECTED,
         E_UNEXPECTED,
         {"CanInPlaceActivate", "OnInPlaceActivate", "GetWindowContext", "OnInPlaceDeactivate"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.refused);
        container.calls.clear();
        container.answer = [&](const std::string& method) { return method == row.refused ? row.answer : S_OK; };
        EXPECT_EQ(container.doVerb(OLEIVERB_UIACTIVATE), row.expected);
        EXPECT_EQ(container.calls, row.calls);
        EXPECT_EQ(container.controlWindow(), nullptr);
    }
    container.answer = nullptr;
    EXPECT_EQ(container.doVerb(OLEIVERB_HIDE), S_OK);
    EXPECT_EQ(container.doVerb(-99), E_NOTIMPL);
    EXPECT_EQ(container.controlWindow(), nullptr);
    EXPECT_EQ(container.doVerb(99), OLEOBJ_S_INVALIDVERB) << "shown, though not as asked";
    EXPECT_NE(container.controlWindow(), nullptr);
    EXPECT_EQ(container.object->SetClientSite(nullptr), S_OK);
    EXPECT_EQ(container.controlWindow(), nullptr);
    EXPECT_EQ(container.object->DoVerb(OLEIVERB_SHOW, nullptr, nullptr, 0, nullptr, nullptr), E_UNEXPECTED);
}

TEST_F(Embedded, HidingAndDeactivatingTakeItsWindowAway) {
    ComPtr<IOleClientSite> site;
    EXPECT_EQ(container.object->GetClientSite(&site), S_OK);
    EXPECT_EQ(site, container.site);
    EXPECT_EQ(container.doVerb(OLEIVERB_DISCARDUNDOSTATE), S_OK) << "there is none";
    const auto inPlace = as<IOleInPlaceObject>();
    const std::function<HRESULT()> ways[] = {[&] { return container.doVerb(OLEIVERB_HIDE); },
                                             [&] { return inPlace->InPlaceDeactivate(); }};
    for (const auto& way : ways) {
        ASSERT_EQ(container.doVerb(OLEIVERB_SHOW), S_OK);
        EXPECT_EQ(way(), S_OK);
        EXPECT_EQ(container.calls.back(), "OnInPlaceDeactivate");
        HWND window = nullptr;
        EXPECT_EQ(inPlace->GetWindow(&window), E_FAIL);
        EXPECT_EQ(inPlace->SetObjectRects(&Container::kPlace, nullptr), E_UNEXPECTED);
    }
}

TEST_F(Embedded, AContainerMayComeBackOrChangeItsMindWhileItIsAsked) {
    const Calls asked{"CanInPlaceActivate", "OnInPlaceActivate", "GetWindowContext", "ShowObject"};
    container.onCall = [&](const std::string& call) {
        if (std::ranges::find(asked, call) != asked.end()) {
            EXPECT_EQ(container.doVerb(OLEIVERB_UIACTIVATE), OLEOBJ_S_CANNOT_DOVERB_NOW) << call;
        }
    };
    EXPECT_EQ(container.doVerb(OLEIVERB_SHOW), S_OK);
    EXPECT_EQ(container.calls, asked);
    for (std::size_t at = 0; at < asked.size(); ++at) {
        SCOPED_TRACE(asked[at]);
        container.onCall = nullptr;
        container.object->Close(OLECLOSE_NOSAVE);
        container.calls.clear();
        container.onCall = [&](const std::string& call) {
            if (call == asked[at]) {
                container.object->Close(OLECLOSE_NOSAVE);
            }
        };
        EXPECT_EQ(container.doVerb(OLEIVERB_UIACTIVATE), E_ABORT);
        EXPECT_EQ(container.controlWindow(), nullptr);
        EXPECT_EQ(std::ranges::count(container.calls, "OnInPlaceDeactivate"), at == 0 ? 0 : 1);
    }
}

TEST_F(Embedded, ClosedDuringARunItStopsAndKeepsQuiet) {
    container.doVerb(OLEIVERB_UIACTIVATE);
    runWith([&] { container.close(); });
    EXPECT_EQ(services.network.requests.size(), 1U) << "the second command is not sent";
    EXPECT_EQ(container.calls.back(), "OnInPlaceDeactivate");
}

TEST_F(Embedded, LetGoOfDuringARunItGoesWhenTheRunHasUnwound) {
    container.doVerb(OLEIVERB_UIACTIVATE);
    runWith([&] {
        container.letGo();
        object.Reset();
        EXPECT_TRUE(windows::moduleInUse()) << "code of the module is on the stack";
    });
    EXPECT_EQ(services.network.requests.size(), 1U);
    EXPECT_EQ(engine.use_count(), 1) << "nobody but this test";
    container.site.Reset();
    EXPECT_FALSE(windows::moduleInUse());
}

TEST_F(Embedded, TheContainersWindowMayGoWithoutAWord) {
    container.doVerb(OLEIVERB_UIACTIVATE);
    runWith([&] {
        DestroyWindow(container.window());
        engine->lProgress.setText("nobody sees this");
        engine->stop();
    });
    EXPECT_EQ(container.controlWindow(), nullptr);
    EXPECT_EQ(container.object->Close(OLECLOSE_NOSAVE), S_OK);
}

TEST_F(Embedded, ARunEndsWhenTheProgramIsToldToEnd) {
    container.doVerb(OLEIVERB_UIACTIVATE);
    runWith([&] {
        PostQuitMessage(7);
        waitInside([&] { return engine->session.gCancelled; });
    });
    EXPECT_EQ(services.network.requests.size(), 1U);
    MSG message{};
    EXPECT_TRUE(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE)) << "the program's own loop is told too";
    EXPECT_EQ(message.wParam, 7U);
}

TEST_F(Embedded, AContainerMayWantNoEventsForAWhile) {
    ComPtr<IConnectionPoint> point;
    object->FindConnectionPoint(__uuidof(__ucSendReceive), &point);
    com_test::Words heard;
    com_test::connect(*point.Get(), "e", heard);
    const auto control = as<IOleControl>();
    const auto cancelAfter = [&](BOOL freeze) {
        heard.clear();
        EXPECT_EQ(control->FreezeEvents(freeze), S_OK);
        engine->cmdCancel_Click();
        return heard.size();
    };
    EXPECT_EQ(cancelAfter(TRUE), 0U);
    EXPECT_EQ(cancelAfter(TRUE), 0U);
    EXPECT_EQ(cancelAfter(FALSE), 0U) << "still frozen once";
    EXPECT_EQ(cancelAfter(FALSE), 1U);
    EXPECT_EQ(cancelAfter(FALSE), 1U) << "once too often does no harm";
    EXPECT_EQ(cancelAfter(TRUE), 0U);
}

} // namespace
} // namespace container_test
