// What a form's window does with keys before they are dispatched.
#include "ui/controls.h"
#include "ui/user_control.h"
#include "windows/forms/form_window.h"
#include "windows/forms/tab_keys.h"

#include <utility>

namespace windows {
namespace {

constexpr LPARAM kRepeated = 1 << 30; // of a key message: the key was down before

bool isFormKey(WPARAM key) noexcept {
    return key == ui::key::kReturn || key == ui::key::kEscape; // the same numbers as virtual keys and as characters
}

} // namespace

bool FormWindow::preview(MSG& message) {
    if (previewTabKey(message)) {
        return true;
    }
    if (message.message == WM_KEYDOWN && previewKeyDown(message)) {
        return true;
    }
    if (message.message == WM_CHAR && previewCharacter(message)) {
        return true;
    }
    return IsDialogMessageW(handle(), &message) != FALSE;
}

// The focus goes to the tabs: what had it may be on the page that is hidden now.
bool FormWindow::previewTabKey(const MSG& message) noexcept {
    bool taken = false;
    for (ui::Control* const control : m_form.controls()) {
        if (auto* const strip = dynamic_cast<ui::TabStrip*>(control)) {
            guarded([&] {
                if (const auto tab = tabAskedFor(message, *strip)) {
                    taken = true;
                    strip->userSelect(*tab);
                    m_form.setFocus(*strip);
                }
            });
        }
    }
    return taken;
}

// Return and Escape, before the dialog manager makes button clicks of them. A key held down since before this window
// had the focus, say in a message box that it closed, repeats into this window and does not count.
bool FormWindow::previewKeyDown(const MSG& message) noexcept {
    m_fedKey.reset();
    if (!isFormKey(message.wParam)) {
        return false;
    }
    if ((message.lParam & kRepeated) != 0) {
        return true;
    }
    const auto key = static_cast<char16_t>(message.wParam);
    if (SendMessageW(message.hwnd, CB_GETDROPPEDSTATE, 0, 0) != 0) {
        m_fedKey = key; // the open list's: it closes
        return false;
    }
    if (feed(key) == 0) {
        return true;
    }
    m_fedKey = key;
    return key == ui::key::kReturn && pressInside(message.hwnd);
}

// Return within a user control, where the dialog manager knows no buttons. False when the focus is on none of a user
// control's controls.
bool FormWindow::pressInside(HWND focus) noexcept {
    for (ui::Control* const control : m_form.controls()) {
        auto* const site = dynamic_cast<ui::UserControlSite*>(control);
        ui::Control* const focused = m_view->controlOf(focus);
        if (site == nullptr || focused == nullptr || &focused->owner() != &site->content()) {
            continue;
        }
        guarded([&] { site->content().userReturn(*focused); });
        return true;
    }
    return false;
}

bool FormWindow::previewCharacter(MSG& message) noexcept {
    const auto key = static_cast<char16_t>(message.wParam);
    if (std::exchange(m_fedKey, std::nullopt) == key) {
        return false;
    }
    if (isFormKey(key) && (message.lParam & kRepeated) != 0) {
        return true;
    }
    message.wParam = feed(key);
    return message.wParam == 0;
}

char16_t FormWindow::feed(char16_t key) noexcept {
    char16_t left = 0;
    if (m_form.shown()) {
        guarded([&] { left = m_form.userKey(key); });
    }
    return left;
}

} // namespace windows
