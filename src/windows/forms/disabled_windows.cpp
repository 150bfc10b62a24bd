#include "windows/forms/disabled_windows.h"

namespace windows {
namespace {

BOOL CALLBACK collect(HWND window, LPARAM into) noexcept {
    try {
        if (IsWindowVisible(window) && IsWindowEnabled(window)) {
            reinterpret_cast<std::vector<HWND>*>(into)->push_back(window);
        }
        return TRUE;
    } catch (...) {
        return FALSE; // out of memory: a window that stays enabled harms less than no form
    }
}

} // namespace

void DisabledWindows::disable(HWND except) {
    if (!m_windows.empty()) {
        return;
    }
    EnumThreadWindows(GetCurrentThreadId(), collect, reinterpret_cast<LPARAM>(&m_windows));
    std::erase(m_windows, except);
    for (const HWND window : m_windows) {
        EnableWindow(window, FALSE);
    }
}

void DisabledWindows::enable() noexcept {
    for (const HWND window : m_windows) {
        if (IsWindow(window)) {
            EnableWindow(window, TRUE);
        }
    }
    m_windows.clear();
}

} // namespace windows
