// A push button's window.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class ButtonPeer final : public ControlPeer {
public:
    ButtonPeer(HWND window, ui::Button& button) noexcept : ControlPeer(window, button), m_button(button) {}

    void command(WORD notification) override {
        if (notification == BN_CLICKED) {
            m_button.userClick();
        }
    }

private:
    ui::Button& m_button;
};

} // namespace windows
