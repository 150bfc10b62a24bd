// The text of a window as a string.
#pragma once

#include <string>

#include <windows.h>

namespace windows {

[[nodiscard]] std::wstring windowText(HWND window);

} // namespace windows
