// A frame's window: a group box, which only shows its caption.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class FramePeer final : public ControlPeer {
public:
    FramePeer(HWND window, ui::Frame& frame) noexcept : ControlPeer(window, frame) {}
};

} // namespace windows
