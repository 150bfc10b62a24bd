#include "windows/forms/dpi.h"

#include <bit>

namespace windows {
namespace {

// Looked up at run time: Windows 7 has none of them.
template <typename Function>
Function user32(const char* name) noexcept {
    const FARPROC found = GetProcAddress(GetModuleHandleW(L"user32.dll"), name);
    return std::bit_cast<Function>(found);
}

using SetThreadContext = void*(WINAPI*)(void*);

// Handles with these fixed values; the compiler's headers for Windows 7 do not have them.
void* const kPerMonitorAware = reinterpret_cast<void*>(-3);
void* const kPerMonitorAwareV2 = reinterpret_cast<void*>(-4);

SetThreadContext setThreadContext() noexcept {
    static const auto function = user32<SetThreadContext>("SetThreadDpiAwarenessContext");
    return function;
}

} // namespace

DpiAwareness::DpiAwareness() noexcept {
    if (const SetThreadContext set = setThreadContext()) {
        m_previous = set(kPerMonitorAwareV2);
        if (m_previous == nullptr) {
            m_previous = set(kPerMonitorAware);
        }
    }
}

DpiAwareness::~DpiAwareness() {
    if (m_previous != nullptr) {
        setThreadContext()(m_previous);
    }
}

UINT dpiOf(HWND window) noexcept {
    using GetDpiForWindow = UINT(WINAPI*)(HWND);
    static const auto function = user32<GetDpiForWindow>("GetDpiForWindow");
    if (function != nullptr) {
        if (const UINT dpi = function(window); dpi != 0) {
            return dpi;
        }
    }
    const HDC screen = GetDC(nullptr);
    const int dpi = GetDeviceCaps(screen, LOGPIXELSY);
    ReleaseDC(nullptr, screen);
    return dpi > 0 ? static_cast<UINT>(dpi) : kBaseDpi;
}

void disableSystemDialogScaling(HWND dialog) noexcept {
    using SetDialogDpiChangeBehavior = BOOL(WINAPI*)(HWND, int mask, int values);
    constexpr int kDisableAll = 1;
    static const auto function = user32<SetDialogDpiChangeBehavior>("SetDialogDpiChangeBehavior");
    if (function != nullptr) {
        function(dialog, kDisableAll, kDisableAll);
    }
}

} // namespace windows
