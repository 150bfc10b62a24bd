// The child dialog of a user control, made from the control's own template.
#pragma once

#include "ui/user_control.h"

#include <windows.h>

namespace windows {

// A child of `parent`; `parameter` arrives with WM_INITDIALOG. Raises 51 when `module` has no template for the control.
[[nodiscard]] HWND makeControlDialog(HINSTANCE module, const ui::UserControl& control, HWND parent, DLGPROC proc,
                                     LPARAM parameter = 0);

} // namespace windows
