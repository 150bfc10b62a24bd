// A text box's window: an edit control.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class TextBoxPeer final : public ControlPeer {
public:
    TextBoxPeer(HWND window, ui::TextBox& box) noexcept;

    void command(WORD notification) override;

private:
    ui::TextBox& m_box;
};

} // namespace windows
