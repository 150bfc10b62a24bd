// The window of a check box or an option button. The window toggles by itself (so that screen readers see it happen);
// the object has the last word, for instance when a handler sets it back.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

template <typename Toggle, bool (Toggle::*isOn)() const noexcept>
class TogglePeer final : public ControlPeer {
public:
    TogglePeer(HWND window, Toggle& toggle) noexcept : ControlPeer(window, toggle), m_toggle(toggle) {}

    void update(Aspects aspects) override {
        ControlPeer::update(aspects);
        if (aspects.has(ui::Aspect::Value)) {
            showValue();
        }
    }

    // Comes for an option button also when the focus comes to one that is not chosen, as the arrow keys do.
    void command(WORD notification) override {
        if (notification == BN_CLICKED) {
            m_toggle.userClick();
            showValue();
        }
    }

private:
    // An option button's tab stop goes along: Tab stops at the chosen one only.
    void showValue() { SendMessageW(window(), BM_SETCHECK, (m_toggle.*isOn)() ? BST_CHECKED : BST_UNCHECKED, 0); }

    Toggle& m_toggle;
};

using CheckBoxPeer = TogglePeer<ui::CheckBox, &ui::CheckBox::checked>;
using OptionButtonPeer = TogglePeer<ui::OptionButton, &ui::OptionButton::chosen>;

} // namespace windows
