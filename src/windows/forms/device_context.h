// A window's device context with the window's own font selected, for measuring text.
#pragma once

#include <windows.h>

namespace windows {

class WindowDeviceContext {
public:
    explicit WindowDeviceContext(HWND window) noexcept
        : m_window(window),
          m_device(GetDC(window)),
          m_previousFont(SelectObject(m_device, reinterpret_cast<HGDIOBJ>(SendMessageW(window, WM_GETFONT, 0, 0)))) {}
    ~WindowDeviceContext() {
        SelectObject(m_device, m_previousFont);
        ReleaseDC(m_window, m_device);
    }
    WindowDeviceContext(const WindowDeviceContext&) = delete;
    WindowDeviceContext& operator=(const WindowDeviceContext&) = delete;

    [[nodiscard]] HDC handle() const noexcept { return m_device; }

private:
    HWND m_window;
    HDC m_device;
    HGDIOBJ m_previousFont;
};

} // namespace windows
