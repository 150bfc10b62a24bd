// Visual styles for our windows alone: the host's process may well run without them.
#pragma once

#include <windows.h>

namespace windows {

// While it lives, controls that the thread makes are those of version 6 of the common controls library, as the manifest
// in the module's resources asks. Without that (no manifest, no such library) it does nothing.
class CommonControlsScope {
public:
    explicit CommonControlsScope(HINSTANCE module) noexcept;
    ~CommonControlsScope();
    CommonControlsScope(const CommonControlsScope&) = delete;
    CommonControlsScope& operator=(const CommonControlsScope&) = delete;

private:
    HANDLE m_context = INVALID_HANDLE_VALUE;
    ULONG_PTR m_cookie = 0;
    bool m_active = false;
};

} // namespace windows
