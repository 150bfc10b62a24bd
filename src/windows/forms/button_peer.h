// A push button's window. The platform draws it, until it is given a colour of its own.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class ButtonPeer final : public ControlPeer {
public:
    ButtonPeer(HWND window, ui::Button& button) noexcept : ControlPeer(window, button), m_button(button) {}

    void update(Aspects aspects) override;
    void command(WORD notification) override {
        if (notification == BN_CLICKED) {
            m_button.userClick();
        }
    }
    void draw(const DRAWITEMSTRUCT& item) override;

private:
    ui::Button& m_button;
};

} // namespace windows
