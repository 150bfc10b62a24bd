// Tells when the keyboard comes to one of a dialog's windows, or leaves it: dialogs themselves are not told.
#pragma once

#include <deque>
#include <functional>

#include <windows.h>

namespace windows {

class FocusWatch {
public:
    // `window` got the keyboard from `other`, or lost it to that one, which may be null. May end this object.
    using Heard = std::function<void(HWND window, HWND other, bool got)>;

    // Watches all windows inside of `dialog`, as long as it lives.
    FocusWatch(HWND dialog, Heard heard);
    FocusWatch(const FocusWatch&) = delete;
    FocusWatch& operator=(const FocusWatch&) = delete;
    ~FocusWatch();

private:
    struct Watched {
        FocusWatch& watch;
        HWND window;
        WNDPROC original;
    };

    static BOOL CALLBACK add(HWND window, LPARAM self) noexcept;
    static LRESULT CALLBACK proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    static void leave(const Watched& watched) noexcept;

    Heard m_heard;
    std::deque<Watched> m_windows;
};

} // namespace windows
