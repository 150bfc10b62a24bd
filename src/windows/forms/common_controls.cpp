#include "windows/forms/common_controls.h"

#include "windows/forms/resource.h"

#include <array>

#include <commctrl.h>

namespace windows {

CommonControlsScope::CommonControlsScope(HINSTANCE module) noexcept {
    std::array<wchar_t, 32768> path{};
    GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size()));

    ACTCTXW request{};
    request.cbSize = sizeof request;
    request.dwFlags = ACTCTX_FLAG_RESOURCE_NAME_VALID | ACTCTX_FLAG_HMODULE_VALID;
    request.lpSource = path.data();
    request.lpResourceName = MAKEINTRESOURCEW(IDR_COMMON_CONTROLS);
    request.hModule = module;
    m_context = CreateActCtxW(&request);
    if (m_context != INVALID_HANDLE_VALUE) {
        m_active = ActivateActCtx(m_context, &m_cookie) != FALSE;
    }
    // Window classes that user32 does not have itself; asked for inside the context, so that they are version 6.
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_STANDARD_CLASSES | ICC_PROGRESS_CLASS |
                                                           ICC_LISTVIEW_CLASSES | ICC_TAB_CLASSES};
    InitCommonControlsEx(&classes);
}

CommonControlsScope::~CommonControlsScope() {
    if (m_active) {
        DeactivateActCtx(0, m_cookie);
    }
    if (m_context != INVALID_HANDLE_VALUE) {
        ReleaseActCtx(m_context);
    }
}

} // namespace windows
