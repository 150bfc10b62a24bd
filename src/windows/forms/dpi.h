// Dots per inch: makes the dialog thread per-monitor aware while our windows live on it, whatever the host is.
#pragma once

#include <windows.h>

namespace windows {

inline constexpr UINT kBaseDpi = 96;

// While it lives, windows that the thread makes are per-monitor aware (version 2, else 1). The host's own setting is
// put back at the end. Systems without per-thread awareness (before Windows 10) keep the host's.
class DpiAwareness {
public:
    DpiAwareness() noexcept;
    ~DpiAwareness();
    DpiAwareness(const DpiAwareness&) = delete;
    DpiAwareness& operator=(const DpiAwareness&) = delete;

private:
    void* m_previous = nullptr;
};

// The resolution the window is to be drawn at.
[[nodiscard]] UINT dpiOf(HWND window) noexcept;

// We lay dialogs out ourselves when the resolution changes; the system's own attempt would scale them twice.
void disableSystemDialogScaling(HWND dialog) noexcept;

[[nodiscard]] inline int scale(int length, UINT to, UINT from) noexcept {
    return MulDiv(length, static_cast<int>(to), static_cast<int>(from));
}

} // namespace windows
