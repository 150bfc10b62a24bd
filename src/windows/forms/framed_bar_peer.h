// A framed bar's window: an owner-drawn static.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class FramedBarPeer final : public ControlPeer {
public:
    FramedBarPeer(HWND window, ui::FramedBar& bar) noexcept : ControlPeer(window, bar), m_bar(bar) {}

    void update(Aspects aspects) override;
    void draw(const DRAWITEMSTRUCT& item) override;

private:
    ui::FramedBar& m_bar;
};

} // namespace windows
