// What makes a form modal: the thread's other top-level windows take no input while it is shown.
#pragma once

#include <vector>

#include <windows.h>

namespace windows {

class DisabledWindows {
public:
    DisabledWindows() = default;
    ~DisabledWindows() { enable(); }
    DisabledWindows(const DisabledWindows&) = delete;
    DisabledWindows& operator=(const DisabledWindows&) = delete;

    // Disables the calling thread's visible and enabled top-level windows but `except` (may be null), and keeps in mind
    // which. Without effect while any are kept.
    void disable(HWND except);
    // Enables exactly those again.
    void enable() noexcept;

private:
    std::vector<HWND> m_windows;
};

} // namespace windows
