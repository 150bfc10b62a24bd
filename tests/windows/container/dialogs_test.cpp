// What the control asks in dialogs of its own while it is in a container, and what the container may do meanwhile.
#include "windows/com/event_sink.h"
#include "windows/container/embedded.h"
#include "windows/objects/clsQVI_Link_object.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace container_test {
namespace {

using Microsoft::WRL::ComPtr;
using windows::com::adopt;

class Dialogs : public Embedded {
protected:
    Dialogs() {
        container.doVerb(OLEIVERB_UIACTIVATE);
        container.calls.clear();
    }
    ~Dialogs() override { DestroyWindow(second); }

    [[nodiscard]] static HWND ownerOf(HWND dialog) { return GetWindow(dialog, GW_OWNER); }
    [[nodiscard]] std::ptrdiff_t told(const char* call) const { return std::ranges::count(container.calls, call); }
    // Presses OK and does this while the login is shown. Returns when the run has ended.
    void whileLoggingIn(std::function<void()> meanwhile) {
        engine->session.bLoginNotRequired = false;
        bool asked = false;
        person.click(kControl, "cmdOK")
            .waitFor("the login", [] { return test::formWindow("frmLogin") != nullptr; })
            .then([&, meanwhile = std::move(meanwhile)] {
                asked = true;
                EXPECT_EQ(ownerOf(test::formWindow("frmLogin")), container.window());
                EXPECT_EQ(told("EnableModeless no"), told("EnableModeless yes") + 1);
                meanwhile();
            });
        container.runUntil([&] { return asked && engine->cmdOK.enabled(); });
        EXPECT_EQ(test::formWindow("frmLogin"), nullptr);
        EXPECT_EQ(services.network.requests.size(), 0U) << "closed without a password";
        EXPECT_TRUE(IsWindowEnabled(second));
        engine->session.bLoginNotRequired = true;
    }

    // Another one of the host's program.
    HWND second =
        CreateWindowW(L"Static", L"", WS_OVERLAPPED | WS_VISIBLE, 0, 0, 50, 50, nullptr, nullptr, nullptr, nullptr);
};

TEST_F(Dialogs, BelongToTheContainersWindowAndTheHostWaits) {
    whileLoggingIn([&] {
        EXPECT_FALSE(IsWindowEnabled(second));
        EXPECT_FALSE(IsWindowEnabled(container.window()));
        PostMessageW(test::formWindow("frmLogin"), WM_CLOSE, 0, 0);
    });
    EXPECT_TRUE(IsWindowEnabled(container.window()));
    EXPECT_EQ(told("EnableModeless yes"), 1);

    container.calls.clear();
    runWith([&] {
        person.waitFor("the box", [] { return test::systemDialog() != nullptr; }).then([&] {
            EXPECT_EQ(ownerOf(test::systemDialog()), container.window());
            EXPECT_FALSE(IsWindowEnabled(second));
            PostMessageW(test::systemDialog(), WM_COMMAND, IDOK, 0);
        });
        services.desktop.messageBox("The server says no.");
        engine->stop();
    });
    EXPECT_EQ(told("EnableModeless no"), 1);
    EXPECT_EQ(told("EnableModeless yes"), 1);
    EXPECT_TRUE(IsWindowEnabled(second));
}

TEST_F(Dialogs, OfAMethodThatTheHostCallsAreTheContainersToo) {
    const auto isBox = [] { return test::systemDialog() != nullptr; };
    person.waitFor("the box about what is missing", isBox).then([&] {
        EXPECT_EQ(ownerOf(test::systemDialog()), container.window());
        PostMessageW(test::systemDialog(), WM_COMMAND, IDOK, 0);
    });
    person.waitFor("the settings", [] { return test::formWindow("frmDial") != nullptr; }).then([&] {
        EXPECT_EQ(ownerOf(test::formWindow("frmDial")), container.window());
        EXPECT_EQ(told("EnableModeless no"), 2);
        EXPECT_EQ(told("EnableModeless yes"), 1);
        PostMessageW(test::formWindow("frmDial"), WM_CLOSE, 0, 0);
    });
    VARIANT_BOOL accepted = VARIANT_TRUE;
    EXPECT_EQ(object->LoadfrmDial(VARIANT_FALSE, &accepted), S_OK);
    EXPECT_EQ(accepted, VARIANT_FALSE);
    EXPECT_EQ(told("EnableModeless yes"), 2);
}

TEST_F(Dialogs, CloseWithTheControlAndWithTheirOrTheContainersWindow) {
    whileLoggingIn([&] { container.object->Close(OLECLOSE_NOSAVE); });
    EXPECT_EQ(container.controlWindow(), nullptr);
    container.doVerb(OLEIVERB_UIACTIVATE);
    EXPECT_EQ(told("EnableModeless yes"), 1);
    whileLoggingIn([&] { DestroyWindow(test::formWindow("frmLogin")); });
    EXPECT_EQ(told("EnableModeless yes"), 2);
    whileLoggingIn([&] { DestroyWindow(container.window()); });
    EXPECT_EQ(container.controlWindow(), nullptr);
    container.object->Close(OLECLOSE_NOSAVE);
    EXPECT_EQ(told("EnableModeless yes"), 3);
}

// A handler of the control's events may open the component's forms.
TEST(OwnForms, BelongToNoWindowWhoeverRunsAsTheHostAsksForThem) {
    const com_test::ComApartment apartment;
    const auto control = adopt(new windows::com::SendReceiveObject);
    const auto link = adopt(new windows::com::LinkObject);
    ComPtr<IUnknown> identity;
    control.As(&identity);
    Container container(identity);
    container.doVerb(OLEIVERB_UIACTIVATE);
    bool shown = false;
    const auto showForm = [&](DISPID, DISPPARAMS&, EXCEPINFO&) {
        EXPECT_EQ(link->ShowForm(), S_OK);
        shown = true;
        return S_OK;
    };
    com_test::Words heard;
    ComPtr<IConnectionPoint> point;
    control->FindConnectionPoint(__uuidof(__ucSendReceive), &point);
    const DWORD cookie = com_test::connect(*point.Get(), "e", heard, showForm);
    test::Person person;
    person.click(kControl, "cmdCancel")
        .waitFor("the form", [] { return test::formWindow("frmQVI_Images") != nullptr; })
        .then([] {
            EXPECT_EQ(GetWindow(test::formWindow("frmQVI_Images"), GW_OWNER), nullptr);
            PostMessageW(test::formWindow("frmQVI_Images"), WM_CLOSE, 0, 0);
        });
    container.runUntil([&] { return shown; });
    point->Unadvise(cookie);
}

} // namespace
} // namespace container_test
