// The commands that use the controls of the current form, or read them.
#include "drive/controls.h"
#include "drive/failure.h"
#include "drive/keyboard.h"
#include "drive/player.h"

#include <algorithm>

namespace drive {
namespace {

std::string quoted(const std::vector<std::string>& values) {
    std::string text;
    for (const std::string& value : values) {
        text += (text.empty() ? "\"" : " \"") + value + "\"";
    }
    return text.empty() ? "nothing" : text;
}

} // namespace

HWND Player::currentForm() const {
    if (m_form.empty()) {
        throw Failure("no form yet: a 'wait FORM' must come first");
    }
    const HWND window = m_screen.form(m_form);
    if (window == nullptr) {
        throw Failure("the form " + m_form + " is not shown");
    }
    return window;
}

HWND Player::control(std::string_view name) const {
    const HWND found = findControl(currentForm(), m_form, name);
    if (found == nullptr) {
        throw Failure("the window of " + m_form + " has no control " + std::string(name));
    }
    return found;
}

HWND Player::usableControl(std::string_view name) const {
    const HWND found = control(name);
    m_patience.until(std::string(name) + " to be usable", [&] { return usable(found); });
    return found;
}

void Player::clickControl(Arguments arguments) {
    const HWND button = usableControl(arguments[0]);
    click(button);
    settle(button);
}

void Player::checkControl(Arguments arguments) {
    const std::string& wanted = arguments[1];
    if (wanted != "on" && wanted != "off") {
        throw Failure("usage: check CONTROL on|off");
    }
    const HWND box = usableControl(arguments[0]);
    if (valuesOf(box) != std::vector{wanted}) {
        click(box);
    }
    m_patience.until(arguments[0] + " to be " + wanted, [&] { return valuesOf(box) == std::vector{wanted}; });
}

void Player::selectInList(Arguments arguments) {
    const HWND list = usableControl(arguments[0]);
    m_patience.until("the line '" + arguments[1] + "' in " + arguments[0],
                     [&] { return selectLine(list, arguments[1]); });
    settle(list);
}

void Player::typeText(Arguments arguments) {
    const HWND edit = usableControl(arguments[0]);
    replaceText(edit, arguments[1]);
    settle(edit);
}

void Player::focusControl(Arguments arguments) {
    const HWND target = usableControl(arguments[0]);
    moveFocus(target);
    m_patience.until(arguments[0] + " to have the focus", [&] { return focusOf(target) == target; });
}

void Player::keys(Arguments arguments) {
    for (const std::string& name : arguments) {
        const Stroke stroke = parseStroke(name);
        HWND window = nullptr;
        m_patience.until("a window in the foreground that takes keys", [&] {
            window = m_screen.active();
            if (window != nullptr && GetForegroundWindow() != window) {
                SetForegroundWindow(window);
            }
            return window != nullptr && GetForegroundWindow() == window;
        });
        ask(window, WM_NULL);
        press(stroke);
        if (IsWindow(window) != FALSE) {
            settle(window);
        }
    }
}

void Player::read(Arguments arguments) {
    m_print(arguments[0] + ": " + quoted(valuesOf(control(arguments[0]))));
}

void Player::expectEqual(const std::string& what, const std::string& wanted,
                         const std::function<std::string()>& read) const {
    std::string actual;
    try {
        m_patience.until(what, [&] { return (actual = read()) == wanted; });
    } catch (const Failure& failure) {
        throw Failure(std::string(failure.what()) + "\n  wanted: " + wanted + "\n  found:  " + actual);
    }
}

void Player::expectValues(Arguments arguments) {
    const std::vector<std::string> wanted(arguments.begin() + 1, arguments.end());
    expectEqual("what " + arguments[0] + " shows", quoted(wanted),
                [&] { return quoted(valuesOf(control(arguments[0]))); });
}

void Player::expectText(Arguments arguments) {
    expectEqual("the text of " + arguments[0], arguments[1], [&] { return textOf(control(arguments[0])); });
}

void Player::expectCaption(Arguments arguments) {
    expectEqual("the caption of " + m_form, arguments[0], [&] { return textOf(currentForm()); });
}

void Player::expectEnabled(Arguments arguments) {
    static_cast<void>(usableControl(arguments[0]));
}

void Player::expectDisabled(Arguments arguments) {
    m_patience.until(arguments[0] + " to be disabled", [&] { return IsWindowEnabled(control(arguments[0])) == FALSE; });
}

void Player::expectVisible(Arguments arguments) {
    m_patience.until(arguments[0] + " to show", [&] { return IsWindowVisible(control(arguments[0])) != FALSE; });
}

void Player::expectHidden(Arguments arguments) {
    m_patience.until(arguments[0] + " to be hidden", [&] { return IsWindowVisible(control(arguments[0])) == FALSE; });
}

void Player::expectFocus(Arguments arguments) {
    m_patience.until(arguments[0] + " to have the focus", [&] {
        const HWND wanted = control(arguments[0]);
        return focusOf(wanted) == wanted;
    });
}

} // namespace drive
