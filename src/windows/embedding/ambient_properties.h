// What a container wants its controls to look like.
#pragma once

#include "windows/forms/control_window.h"

#include <windows.h>

#include <oleidl.h>

namespace windows::com {

// The container's own colours; those that it does not tell are none. A container need not know any of this.
[[nodiscard]] ControlWindow::Colors ambientColors(IOleClientSite& client);

} // namespace windows::com
