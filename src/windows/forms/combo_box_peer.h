// A drop-down list's window.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class ComboBoxPeer final : public ControlPeer {
public:
    ComboBoxPeer(HWND window, ui::ComboBox& box) noexcept : ControlPeer(window, box), m_box(box) {}

    void update(Aspects aspects) override;
    void command(WORD notification) override;

private:
    void updateItems();
    void updateSelection();

    ui::ComboBox& m_box;
};

} // namespace windows
