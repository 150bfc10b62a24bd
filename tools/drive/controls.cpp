// Reads and works the standard controls by the messages that cross process borders.
#include "drive/controls.h"

#include "drive/failure.h"
#include "drive/list_view.h"
#include "drive/screen.h"
#include "drive/wide.h"
#include "windows/forms/control_ids.h"

#include <algorithm>

namespace drive {
namespace {

constexpr std::string_view kUserControlPrefix = "uc";

bool isCheckBox(HWND control) {
    if (classOf(control) != "Button") {
        return false;
    }
    const LONG type = GetWindowLongW(control, GWL_STYLE) & BS_TYPEMASK;
    return type == BS_CHECKBOX || type == BS_AUTOCHECKBOX || type == BS_RADIOBUTTON || type == BS_AUTORADIOBUTTON;
}

// The messages of the two kinds of lists, which are alike otherwise.
struct ListMessages {
    UINT count, length, text, select;
    WORD selected; // the notification of a person's choice, which the message does not give
};

ListMessages messagesOf(HWND list) {
    return classOf(list) == "ComboBox"
               ? ListMessages{CB_GETCOUNT, CB_GETLBTEXTLEN, CB_GETLBTEXT, CB_SETCURSEL, CBN_SELCHANGE}
               : ListMessages{LB_GETCOUNT, LB_GETTEXTLEN, LB_GETTEXT, LB_SETCURSEL, LBN_SELCHANGE};
}

std::string lineOf(HWND list, const ListMessages& messages, WPARAM index) {
    const LRESULT length = ask(list, messages.length, index);
    if (length < 0) {
        return {};
    }
    std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
    const LRESULT copied = ask(list, messages.text, index, reinterpret_cast<LPARAM>(text.data()));
    text.resize(static_cast<std::size_t>(std::clamp<LRESULT>(copied, 0, length)));
    return narrow(text);
}

std::vector<std::string> linesOf(HWND list) {
    std::vector<std::string> lines;
    const ListMessages messages = messagesOf(list);
    const LRESULT count = ask(list, messages.count);
    for (LRESULT index = 0; index < count; ++index) {
        lines.push_back(lineOf(list, messages, static_cast<WPARAM>(index)));
    }
    return lines;
}

void post(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (PostMessageW(window, message, wParam, lParam) == FALSE) {
        throw Failure("a message cannot be posted: error " + std::to_string(GetLastError()));
    }
}

} // namespace

HWND findControl(HWND form, std::string_view formName, std::string_view controlName) {
    // On the form itself, or on a user control that sits on it.
    int id = windows::controlId(formName, controlName);
    for (const windows::ControlId& entry : windows::allControlIds()) {
        if (id == 0 && entry.control == controlName && entry.form.starts_with(kUserControlPrefix)) {
            id = entry.id;
        }
    }
    if (id == 0) {
        throw Failure("there is no control '" + std::string(controlName) + "' on " + std::string(formName));
    }
    for (const HWND control : descendantsOf(form)) {
        if (GetDlgCtrlID(control) == id) {
            return control;
        }
    }
    return nullptr;
}

bool usable(HWND control) {
    return IsWindowVisible(control) != FALSE && IsWindowEnabled(control) != FALSE &&
           IsWindowEnabled(GetAncestor(control, GA_ROOT)) != FALSE;
}

std::vector<std::string> valuesOf(HWND control) {
    if (classOf(control) == "ListBox") {
        return linesOf(control);
    }
    if (classOf(control) == "SysListView32") {
        return rowsOf(control);
    }
    if (isCheckBox(control)) {
        return {ask(control, BM_GETCHECK) == BST_CHECKED ? "on" : "off"};
    }
    return {textOf(control)};
}

void click(HWND button) {
    post(button, BM_CLICK, 0, 0);
}

bool selectLine(HWND list, std::string_view text) {
    const std::vector<std::string> lines = linesOf(list);
    const auto found = std::ranges::find(lines, text);
    if (found == lines.end()) {
        return false;
    }
    const ListMessages messages = messagesOf(list);
    ask(list, messages.select, static_cast<WPARAM>(found - lines.begin()));
    post(GetParent(list), WM_COMMAND, MAKEWPARAM(GetDlgCtrlID(list), messages.selected),
         reinterpret_cast<LPARAM>(list));
    return true;
}

void replaceText(HWND edit, std::string_view text) {
    ask(edit, EM_SETSEL, 0, -1);
    if (text.empty()) {
        post(edit, WM_KEYDOWN, VK_DELETE, 1);
        return;
    }
    for (const wchar_t unit : wide(text)) {
        if (unit != L'\n') {
            post(edit, WM_CHAR, unit, 1);
        }
    }
}

void moveFocus(HWND control) {
    post(GetAncestor(control, GA_ROOT), WM_NEXTDLGCTL, reinterpret_cast<WPARAM>(control), TRUE);
}

HWND focusOf(HWND window) {
    GUITHREADINFO info{};
    info.cbSize = sizeof info;
    return GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info) != FALSE ? info.hwndFocus : nullptr;
}

} // namespace drive
