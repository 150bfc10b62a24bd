// A check box's window. The window toggles by itself (so that screen readers see it happen); the object has the last
// word, for instance when a handler sets the box back.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class CheckBoxPeer final : public ControlPeer {
public:
    CheckBoxPeer(HWND window, ui::CheckBox& box) noexcept : ControlPeer(window, box), m_box(box) {}

    void update(Aspects aspects) override {
        ControlPeer::update(aspects);
        if (aspects.has(ui::Aspect::Value)) {
            updateValue();
        }
    }

    void command(WORD notification) override {
        if (notification == BN_CLICKED) {
            m_box.userClick();
            updateValue();
        }
    }

private:
    void updateValue() { SendMessageW(window(), BM_SETCHECK, m_box.checked() ? BST_CHECKED : BST_UNCHECKED, 0); }

    ui::CheckBox& m_box;
};

} // namespace windows
