// A label's window: a static text, which wraps by itself.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class LabelPeer final : public ControlPeer {
public:
    LabelPeer(HWND window, ui::Label& label) noexcept : ControlPeer(window, label), m_label(label) {}

    [[nodiscard]] int missingHeight() const override;

private:
    ui::Label& m_label;
};

} // namespace windows
