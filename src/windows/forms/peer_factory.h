// Makes the peer that suits a control object.
#pragma once

#include "windows/forms/control_peer.h"

#include <memory>

namespace windows {

// Raises 51 when no kind of window is known for the control, or when `window` is of another kind.
[[nodiscard]] std::unique_ptr<ControlPeer> makePeer(HWND window, ui::Control& control);

} // namespace windows
