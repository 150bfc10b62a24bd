// The control in a container that only draws it: on paper, in a metafile, before it is activated.
#pragma once

#include <windows.h>

namespace windows::com {

// A place holder with the control's name, in the device's present coordinates.
void drawInactive(HDC device, const RECT& bounds);

} // namespace windows::com
