#include "windows/forms/focus_watch.h"

#include <utility>

namespace windows {
namespace {

// Of a watched window: its entry. The system's own way of subclassing is not in every version of its library.
constexpr wchar_t kEntry[] = L"QVI_FocusWatch";

} // namespace

FocusWatch::FocusWatch(HWND dialog, Heard heard) : m_heard(std::move(heard)) {
    EnumChildWindows(dialog, add, reinterpret_cast<LPARAM>(this));
}

FocusWatch::~FocusWatch() {
    for (const Watched& watched : m_windows) {
        leave(watched);
    }
}

BOOL CALLBACK FocusWatch::add(HWND window, LPARAM self) noexcept {
    auto& watch = *reinterpret_cast<FocusWatch*>(self);
    try {
        const auto original = reinterpret_cast<WNDPROC>(GetWindowLongPtrW(window, GWLP_WNDPROC));
        watch.m_windows.push_back({watch, window, original});
        SetPropW(window, kEntry, &watch.m_windows.back());
        SetWindowLongPtrW(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(proc));
        return TRUE;
    } catch (...) {
        return FALSE; // out of memory: a window that is not watched still works
    }
}

void FocusWatch::leave(const Watched& watched) noexcept {
    if (GetPropW(watched.window, kEntry) == &watched) {
        SetWindowLongPtrW(watched.window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(watched.original));
        RemovePropW(watched.window, kEntry);
    }
}

LRESULT CALLBACK FocusWatch::proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    const auto* const watched = static_cast<const Watched*>(GetPropW(window, kEntry));
    if (watched == nullptr) {
        return DefWindowProcW(window, message, wParam, lParam);
    }
    const WNDPROC original = watched->original;
    if (message == WM_NCDESTROY) {
        leave(*watched);
    }
    const LRESULT result = CallWindowProcW(original, window, message, wParam, lParam);
    if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
        // Looked up again: the window's own procedure may have ended the watch.
        if (const auto* const still = static_cast<const Watched*>(GetPropW(window, kEntry))) {
            still->watch.m_heard(window, reinterpret_cast<HWND>(wParam), message == WM_SETFOCUS);
        }
    }
    return result;
}

} // namespace windows
