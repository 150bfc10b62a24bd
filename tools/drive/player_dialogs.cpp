// The commands that answer message boxes, input boxes and file dialogs.
#include "drive/controls.h"
#include "drive/dialogs.h"
#include "drive/failure.h"
#include "drive/player.h"
#include "drive/wide.h"

#include <charconv>

namespace drive {
namespace {

std::string nameOf(DialogKind kind) {
    switch (kind) {
    case DialogKind::MessageBox: return "a message box";
    case DialogKind::InputBox: return "an input box";
    case DialogKind::FileDialog: return "a file dialog";
    case DialogKind::None: break;
    }
    return "a dialog";
}

DialogKind kindOf(const std::string& word) {
    if (word == "box") {
        return DialogKind::MessageBox;
    }
    if (word == "input") {
        return DialogKind::InputBox;
    }
    if (word == "file") {
        return DialogKind::FileDialog;
    }
    throw Failure("'" + word + "' is no kind of dialog; file, input and box are");
}

void expectSame(const std::string& what, const std::string& actual, const std::string& wanted) {
    if (actual != wanted) {
        throw Failure(what + " is '" + actual + "', not '" + wanted + "'");
    }
}

} // namespace

HWND Player::dialog(DialogKind kind, std::optional<double> seconds) const {
    HWND found = nullptr;
    m_patience.until(
        nameOf(kind), [&] { return (found = m_screen.dialog(kind)) != nullptr; }, seconds);
    ask(found, WM_NULL);
    return found;
}

void Player::box(Arguments arguments) {
    const HWND window = dialog(DialogKind::MessageBox);
    const std::string text = boxText(window);
    if (text.find(arguments[0]) == std::string::npos) {
        throw Failure("the message box says '" + text + "', which does not hold '" + arguments[0] + "'");
    }
    if (arguments.size() > 2) {
        expectSame("the title of the message box", textOf(window), arguments[2]);
    }
    answerBox(window, arguments[1]);
    waitUntilGone(window, "the message box");
}

void Player::boxIcon(Arguments arguments) {
    const std::string actual = boxHasIcon(dialog(DialogKind::MessageBox)) ? "on" : "off";
    expectSame("the icon of the message box", actual, arguments[0]);
}

HWND Player::inputBox(Arguments arguments, std::size_t promptIndex) const {
    const HWND window = dialog(DialogKind::InputBox);
    if (arguments.size() > promptIndex) {
        expectSame("the prompt of the input box", inputPrompt(window), arguments[promptIndex]);
    }
    return window;
}

void Player::input(Arguments arguments) {
    const HWND window = inputBox(arguments, 1);
    answerInput(window, arguments[0]);
    waitUntilGone(window, "the input box");
}

void Player::inputCancel(Arguments arguments) {
    const HWND window = inputBox(arguments, 0);
    cancel(window);
    waitUntilGone(window, "the input box");
}

void Player::pick(Arguments arguments) {
    const HWND window = dialog(DialogKind::FileDialog);
    HWND field = nullptr;
    m_patience.until("the name field of the file dialog", [&] { return (field = fileNameField(window)) != nullptr; });
    const std::wstring path = wide(arguments[0]);
    ask(field, WM_SETTEXT, 0, reinterpret_cast<LPARAM>(path.c_str()));
    m_patience.until("the file name to arrive", [&] { return textOf(field) == arguments[0]; });
    accept(window);
    // Gone, or disabled beneath a box of its own ("File not found"), which the script then answers.
    m_patience.until("the file dialog to close",
                     [&] { return IsWindowVisible(window) == FALSE || IsWindowEnabled(window) == FALSE; });
}

void Player::pickCancel(Arguments) {
    const HWND window = dialog(DialogKind::FileDialog);
    cancel(window);
    waitUntilGone(window, "the file dialog");
}

void Player::waitDialog(Arguments arguments) {
    std::optional<double> seconds;
    if (arguments.size() > 1) {
        double value = 0;
        std::from_chars(arguments[1].data(), arguments[1].data() + arguments[1].size(), value);
        seconds = value;
    }
    settle(dialog(kindOf(arguments[0]), seconds));
}

} // namespace drive
