// Enumerates windows of another process and tells dialogs apart by the controls on them.
#include "drive/screen.h"

#include "drive/failure.h"
#include "drive/wide.h"
#include "windows/forms/control_ids.h"

#include <algorithm>
#include <array>

namespace drive {
namespace {

constexpr int kMessageBoxText = 0xFFFF;

BOOL CALLBACK collect(HWND window, LPARAM windows) noexcept {
    reinterpret_cast<std::vector<HWND>*>(windows)->push_back(window);
    return TRUE;
}

std::string upTo(std::string text, std::size_t limit) {
    std::ranges::replace(text, '\r', ' ');
    std::ranges::replace(text, '\n', ' ');
    return text.size() <= limit ? text : text.substr(0, limit) + "...";
}

std::string describeControls(HWND window) {
    std::string text;
    for (const HWND control : descendantsOf(window)) {
        if (IsWindowVisible(control) == FALSE) {
            continue;
        }
        text += "      " + classOf(control) + " id " + std::to_string(GetDlgCtrlID(control)) + " '" +
                upTo(textOf(control), 120) + "'" + (IsWindowEnabled(control) != FALSE ? "" : " disabled") + "\n";
    }
    return text;
}

} // namespace

LRESULT ask(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    constexpr UINT kMilliseconds = 5000;
    DWORD_PTR result = 0;
    SetLastError(ERROR_SUCCESS);
    if (SendMessageTimeoutW(window, message, wParam, lParam, SMTO_NORMAL, kMilliseconds, &result) == 0) {
        // A window that went away between finding and asking answers nothing, which is what callers look for then.
        if (IsWindow(window) != FALSE && GetLastError() == ERROR_TIMEOUT) {
            throw Failure("a window of class " + classOf(window) + " did not answer a message within 5 s");
        }
        return 0;
    }
    return static_cast<LRESULT>(result);
}

std::string textOf(HWND window) {
    std::wstring text(static_cast<std::size_t>(std::max<LRESULT>(ask(window, WM_GETTEXTLENGTH), 0)) + 1, L'\0');
    const LRESULT length = ask(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()));
    text.resize(std::min(static_cast<std::size_t>(std::max<LRESULT>(length, 0)), text.size() - 1));
    return narrow(text);
}

std::string classOf(HWND window) {
    std::array<wchar_t, 256> name{};
    const int length = GetClassNameW(window, name.data(), static_cast<int>(name.size()));
    return narrow(std::wstring_view(name.data(), static_cast<std::size_t>(length)));
}

std::vector<HWND> descendantsOf(HWND window) {
    std::vector<HWND> windows;
    EnumChildWindows(window, collect, reinterpret_cast<LPARAM>(&windows));
    return windows;
}

DialogKind dialogKindOf(HWND window) {
    if (GetDlgItem(window, windows::controlId("InputBox", "txtInput")) != nullptr) {
        return DialogKind::InputBox;
    }
    if (classOf(window) != "#32770") {
        return DialogKind::None;
    }
    if (GetDlgItem(window, kMessageBoxText) != nullptr) {
        return DialogKind::MessageBox;
    }
    const std::vector<HWND> controls = descendantsOf(window);
    const bool picksFiles = std::ranges::any_of(controls, [](HWND control) { return classOf(control) == "ComboBox"; });
    return picksFiles ? DialogKind::FileDialog : DialogKind::None;
}

std::vector<HWND> Screen::windows() const {
    std::vector<HWND> all;
    EnumWindows(collect, reinterpret_cast<LPARAM>(&all));
    std::erase_if(all, [this](HWND window) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        return IsWindowVisible(window) == FALSE || (m_process != 0 && process != m_process);
    });
    return all;
}

HWND Screen::form(std::string_view name) const {
    const std::string className = std::string(windows::kFormClassPrefix) + std::string(name);
    for (const HWND window : windows()) {
        if (classOf(window) == className) {
            return window;
        }
    }
    return nullptr;
}

HWND Screen::dialog(DialogKind kind) const {
    for (const HWND window : windows()) {
        if (IsWindowEnabled(window) != FALSE && dialogKindOf(window) == kind) {
            return window;
        }
    }
    return nullptr;
}

HWND Screen::active() const {
    for (const HWND window : windows()) {
        if (IsWindowEnabled(window) != FALSE && (GetWindowLongW(window, GWL_STYLE) & WS_CAPTION) == WS_CAPTION) {
            return window;
        }
    }
    return nullptr;
}

std::string Screen::describe() const {
    std::string text;
    for (const HWND window : windows()) {
        text += "  " + classOf(window) + " '" + upTo(textOf(window), 200) + "'" +
                (IsWindowEnabled(window) != FALSE ? "" : " disabled") + "\n" + describeControls(window);
    }
    return text.empty() ? "  no window\n" : text;
}

} // namespace drive
