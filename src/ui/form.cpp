#include "ui/form.h"

#include "base/runtime_error.h"
#include "ui/controls.h"
#include "ui/desktop.h"
#include "ui/user_control.h"

namespace ui {
namespace {

// These work the dialog, whichever control has the focus.
bool isDialogKey(char16_t key) noexcept {
    return key == key::kReturn || key == key::kEscape;
}

} // namespace

void Form::setCaption(std::string_view caption) {
    if (m_caption != caption) {
        m_caption = caption;
        if (observer() != nullptr) {
            observer()->captionChanged();
        }
    }
}

void Form::load() {
    if (m_loaded) {
        return;
    }
    m_loaded = true;
    try {
        Form_Load();
    } catch (...) {
        m_loaded = false;
        throw;
    }
}

void Form::showModal() {
    if (m_shown) {
        throw base::RuntimeError(base::error::kFormAlreadyDisplayed);
    }
    load();
    m_shown = true;
    try {
        Form_Activate();
        m_desktop.showModal(*this);
    } catch (...) {
        m_shown = false;
        throw;
    }
    m_shown = false;
}

void Form::hide() {
    if (m_shown) {
        m_shown = false;
        if (observer() != nullptr) {
            observer()->hidden();
        }
    }
}

void Form::unload() {
    hide();
    m_loaded = false;
}

void Form::setFocus(Control& control) {
    m_focused = &control;
    if (observer() != nullptr) {
        observer()->focusMoved(control);
    }
}

void Form::userFocus(Control& control) {
    if (&control == m_focused) {
        return;
    }
    auto* const losing = dynamic_cast<TextBox*>(m_focused);
    m_focused = &control;
    if (losing != nullptr && losing->onValidate && !losing->onValidate(control)) {
        setFocus(*losing);
    }
}

char16_t Form::userKey(char16_t key) {
    Form_KeyPress(key);
    for (Control* const control : controls()) {
        if (key == 0) {
            break;
        }
        if (auto* const site = dynamic_cast<UserControlSite*>(control)) {
            key = site->content().userKey(key);
        }
    }
    const auto* const box = dynamic_cast<TextBox*>(m_focused);
    return box == nullptr || isDialogKey(key) || box->userKey(key) ? key : u'\0';
}

} // namespace ui
