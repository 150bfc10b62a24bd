// An option button's window. The window chooses by itself, as a check box does; the object has the last word.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class OptionButtonPeer final : public ControlPeer {
public:
    OptionButtonPeer(HWND window, ui::OptionButton& option) noexcept : ControlPeer(window, option), m_option(option) {}

    void update(Aspects aspects) override {
        ControlPeer::update(aspects);
        if (aspects.has(ui::Aspect::Value)) {
            showChoice();
        }
    }

    // Also when the focus comes to one that is not chosen, as the arrow keys do; not to the one that is.
    void command(WORD notification) override {
        if (notification == BN_CLICKED) {
            m_option.userClick();
            showChoice();
        }
    }

private:
    // Takes the tab stop along: Tab stops at the chosen one only.
    void showChoice() { SendMessageW(window(), BM_SETCHECK, m_option.chosen() ? BST_CHECKED : BST_UNCHECKED, 0); }

    ui::OptionButton& m_option;
};

} // namespace windows
