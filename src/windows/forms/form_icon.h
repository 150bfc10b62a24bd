// A form's icon, from a file into the caption and the task bar.
#pragma once

#include "windows/base/handles.h"

#include <string>

#include <windows.h>

namespace windows {

// Must outlive the window that shows it.
class FormIcon {
public:
    // In both sizes that the system shows. A file that is not there, or is no icon, leaves the window's own.
    void show(HWND window, const std::string& path);

private:
    UniqueIcon m_small;
    UniqueIcon m_big;
};

} // namespace windows
