// A picture box's window: an owner-drawn static that shows the picture shrunk to fit, or the placeholder text.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

namespace windows {

class PictureBoxPeer final : public ControlPeer {
public:
    PictureBoxPeer(HWND window, ui::PictureBox& box) noexcept : ControlPeer(window, box), m_box(box) {}

    void update(Aspects aspects) override;
    void draw(const DRAWITEMSTRUCT& item) override;

private:
    void drawPicture(HDC device, const RECT& area);
    void drawText(HDC device, const RECT& area) const;

    ui::PictureBox& m_box;
    // The picture as last drawn: shrunk and blended onto the background, so that a repaint only copies.
    std::shared_ptr<const base::Picture> m_source;
    base::Picture m_drawn;
    COLORREF m_background = 0;
};

} // namespace windows
