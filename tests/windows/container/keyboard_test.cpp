// Keys on their way through a container's message loop, and the focus between the control and its neighbours.
#include "windows/container/embedded.h"

#include <gtest/gtest.h>

#include <functional>

#include <commctrl.h>

namespace container_test {
namespace {

class Keyboard : public Embedded {
protected:
    Keyboard() {
        container.doVerb(OLEIVERB_UIACTIVATE);
        EXPECT_EQ(GetFocus(), window("lvCommands"));
        container.calls.clear();
    }
    ~Keyboard() override { hold(VK_SHIFT, false); }

    // As if a person held the key down; key messages alone do not tell.
    static void hold(int key, bool down) {
        BYTE keys[256];
        GetKeyboardState(keys);
        keys[key] = down ? 0x80 : 0;
        SetKeyboardState(keys);
    }
    void pressUntil(WPARAM key, const std::function<bool()>& done) {
        person.press(key);
        container.runUntil(done);
    }
    [[nodiscard]] static std::function<bool()> focusOn(HWND window) {
        return [=] { return GetFocus() == window; };
    }
};

TEST_F(Keyboard, TabWalksThroughTheControlAndOutAtBothEnds) {
    pressUntil(VK_TAB, focusOn(window("cmdOK")));
    pressUntil(VK_TAB, focusOn(window("cmdCancel")));
    EXPECT_EQ(container.calls, Calls{}) << "all of it inside";
    pressUntil(VK_TAB, focusOn(container.fieldBehind()));
    EXPECT_EQ(container.calls, (Calls{"OnFocus lost", "Tab on"}));
    EXPECT_EQ(as<IOleInPlaceObject>()->UIDeactivate(), S_OK);
    EXPECT_EQ(container.activeObject(), nullptr);
    SetFocus(window("cmdOK"));
    SetFocus(container.fieldBehind());
    container.doVerb(OLEIVERB_UIACTIVATE);
    EXPECT_EQ(GetFocus(), window("cmdOK")) << "where it was last";
    SetFocus(container.fieldBehind());

    hold(VK_SHIFT, true);
    MSG tab{};
    tab.message = WM_KEYDOWN;
    tab.wParam = VK_TAB;
    container.doVerb(OLEIVERB_UIACTIVATE, &tab);
    EXPECT_EQ(GetFocus(), window("cmdCancel")) << "in from behind";
    pressUntil(VK_TAB, focusOn(window("cmdOK")));
    pressUntil(VK_TAB, focusOn(window("lvCommands")));
    container.calls.clear();
    pressUntil(VK_TAB, focusOn(container.fieldBefore()));
    EXPECT_EQ(container.calls, (Calls{"OnFocus lost", "Tab back"}));
    container.calls.clear();
    SetFocus(window("cmdCancel"));
    EXPECT_EQ(container.calls, Calls{"OnFocus got"}) << "active all the time";
}

TEST_F(Keyboard, ReturnPressesTheDefaultButtonAndEscapeCancels) {
    services.network.willAnswer("<results/>");
    services.network.willAnswer("<results/>");
    pressUntil(VK_RETURN, [&] { return services.network.requests.size() == 2 && engine->cmdOK.enabled(); });
    container.runUntil(focusOn(window("lvCommands"))); // back from Cancel, where it was while OK was dead
    EXPECT_FALSE(engine->session.gCancelled);
    pressUntil(VK_ESCAPE, [&] { return engine->session.gCancelled; });
    engine->session.gCancelled = false;
    person.press(VK_ESCAPE, 1 << 30);
    pressUntil(VK_DOWN, [&] { return ListView_GetNextItem(window("lvCommands"), -1, LVNI_FOCUSED) == 1; });
    EXPECT_FALSE(engine->session.gCancelled) << "held down since before";
}

TEST_F(Keyboard, KeysThatTheControlDoesNotKnowAreTheContainers) {
    const auto ask = [&](HWND target, UINT kind, WPARAM key) {
        MSG message{};
        message.hwnd = target;
        message.message = kind;
        message.wParam = key;
        return as<IOleInPlaceActiveObject>()->TranslateAccelerator(&message);
    };
    EXPECT_EQ(ask(window("lvCommands"), WM_KEYDOWN, VK_F1), S_FALSE);
    EXPECT_EQ(ask(window("lvCommands"), WM_KEYDOWN, 'S'), S_FALSE);
    EXPECT_EQ(ask(window("lvCommands"), WM_SYSCHAR, 'f'), S_FALSE) << "a menu's";
    EXPECT_EQ(ask(container.fieldBehind(), WM_KEYDOWN, VK_RETURN), S_FALSE);
    EXPECT_EQ(ask(window("lvCommands"), WM_KEYDOWN, VK_UP), S_OK);
    EXPECT_EQ(as<IOleInPlaceActiveObject>()->TranslateAccelerator(nullptr), E_POINTER);
}

TEST_F(Keyboard, AltAndALetterPressFromAnywhereInTheContainer) {
    const auto control = as<IOleControl>();
    CONTROLINFO info{};
    info.cb = sizeof info;
    EXPECT_EQ(control->GetControlInfo(&info), S_OK);
    EXPECT_EQ(info.cAccel, 0U) << "neither box is shown";
    EXPECT_EQ(info.dwFlags, DWORD{CTRLINFO_EATS_RETURN | CTRLINFO_EATS_ESCAPE});

    engine->SetDownloadVisible(true);
    container.runUntil([&] { return !container.calls.empty(); });
    EXPECT_EQ(container.calls, Calls{"OnControlInfoChanged"});
    EXPECT_EQ(control->GetControlInfo(&info), S_OK);
    MSG key{};
    key.message = WM_SYSKEYDOWN;
    key.wParam = 'D';
    key.lParam = 1 << 29; // Alt is down
    hold(VK_MENU, true);
    EXPECT_TRUE(IsAccelerator(info.hAccel, info.cAccel, &key, nullptr));
    hold(VK_MENU, false);
    key.message = WM_SYSCHAR;
    key.wParam = 'd';
    EXPECT_TRUE(IsAccelerator(info.hAccel, info.cAccel, &key, nullptr));
    SetFocus(container.fieldBehind());
    EXPECT_EQ(control->OnMnemonic(&key), S_OK);
    EXPECT_TRUE(engine->cDownloadFiles.checked());
    EXPECT_EQ(GetFocus(), window("cDownloadFiles"));
    key.hwnd = GetFocus();
    EXPECT_EQ(as<IOleInPlaceActiveObject>()->TranslateAccelerator(&key), S_OK) << "and from inside";
    EXPECT_FALSE(engine->cDownloadFiles.checked());
}

TEST_F(Keyboard, DuringARunTheKeysComeThroughAllTheSame) {
    runWith([&] {
        waitInside(focusOn(window("cmdCancel"))); // OK is dead by now
        PostMessageW(GetFocus(), WM_KEYDOWN, VK_ESCAPE, 1);
        waitInside([&] { return engine->session.gCancelled; });
    });
    EXPECT_EQ(services.network.requests.size(), 1U);
}

TEST_F(Keyboard, ARunDoesNotTakeTheFocusFromTheContainersOwnFields) {
    runWith([&] {
        SetFocus(container.fieldBehind());
        engine->stop();
    });
    bool flushed = false;
    person.then([&] { flushed = true; });
    container.runUntil([&] { return flushed; });
    EXPECT_EQ(GetFocus(), container.fieldBehind());
}

} // namespace
} // namespace container_test
