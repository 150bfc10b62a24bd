// A group of controls with a life of its own, shown on a form or in a host's window.
#pragma once

#include "ui/container.h"

#include <string_view>

namespace ui {

class Button;

class UserControl : public Container {
public:
    // `name` must outlive the control (a literal); it names its template.
    explicit UserControl(std::string_view name) : m_name(name) {}

    [[nodiscard]] std::string_view name() const noexcept { return m_name; }

    // What Return presses while no other button has the focus; null: none.
    [[nodiscard]] virtual Button* defaultButton() noexcept { return nullptr; }

    // What shows it closes: whatever it is doing ends soon, as if cancelled, and nobody is told.
    virtual void stop() noexcept {}

    // A person's Return on one of the controls: presses that button, else the default button.
    void userReturn(Control& focused);
    // A person's key, before the focused control sees it. Returns what is left of it: 0 when the control took it.
    char16_t userKey(char16_t key) {
        UserControl_KeyPress(key);
        return key;
    }

protected:
    void setFocus(Control& control) {
        if (observer() != nullptr) {
            observer()->focusMoved(control);
        }
    }
    // Setting the key to 0 swallows it.
    virtual void UserControl_KeyPress(char16_t& key) { static_cast<void>(key); }

private:
    std::string_view m_name;
};

// The place on a form where a user control is shown.
class UserControlSite : public Control {
public:
    // `content` outlives the site.
    UserControlSite(Container& owner, std::string_view name, UserControl& content)
        : Control(owner, name), m_content(content) {}

    [[nodiscard]] UserControl& content() const noexcept { return m_content; }

private:
    UserControl& m_content;
};

} // namespace ui
