// The window class of one form: a dialog's, under a name of its own, so that others can tell the windows apart.
#pragma once

#include <string>

#include <windows.h>

namespace windows {

// Registered while it lives: nothing of the module stays behind when it is unloaded.
class WindowClass {
public:
    WindowClass(HINSTANCE module, std::wstring name);
    ~WindowClass();
    WindowClass(const WindowClass&) = delete;
    WindowClass& operator=(const WindowClass&) = delete;

private:
    HINSTANCE m_module;
    std::wstring m_name;
    bool m_registered;
};

} // namespace windows
