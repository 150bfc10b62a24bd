// Pictures of what is on the screen.
#pragma once

#include <windows.h>

#include <string_view>

namespace drive {

// Saves this part of the screen as a PNG file. Needs a real (or virtual) display; throws Failure when it cannot be
// written.
void saveScreenshot(const RECT& area, std::string_view path);

} // namespace drive
