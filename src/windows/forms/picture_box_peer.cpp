#include "windows/forms/picture_box_peer.h"

#include "ui/picture_scaling.h"
#include "windows/base/wide.h"

#include <algorithm>

namespace windows {
namespace {

std::uint32_t toRgb(COLORREF colour) noexcept {
    return (static_cast<std::uint32_t>(GetRValue(colour)) << 16) |
           (static_cast<std::uint32_t>(GetGValue(colour)) << 8) | GetBValue(colour);
}

} // namespace

void PictureBoxPeer::update(Aspects aspects) {
    ControlPeer::update(aspects);
    if (aspects.has(ui::Aspect::Picture) || aspects.has(ui::Aspect::Text)) {
        InvalidateRect(window(), nullptr, FALSE);
    }
}

void PictureBoxPeer::draw(const DRAWITEMSTRUCT& item) {
    FillRect(item.hDC, &item.rcItem, GetSysColorBrush(COLOR_BTNFACE));
    if (m_box.picture()) {
        drawPicture(item.hDC, item.rcItem);
    } else {
        m_source.reset();
        drawText(item.hDC, item.rcItem);
    }
}

void PictureBoxPeer::drawPicture(HDC device, const RECT& area) {
    const base::Picture& picture = *m_box.picture();
    const int width = area.right - area.left;
    const int height = area.bottom - area.top;
    const COLORREF background = GetSysColor(COLOR_BTNFACE);
    const bool fits = m_drawn.width <= width && m_drawn.height <= height;
    const bool fills = m_drawn.width == width || m_drawn.height == height || m_drawn.width == picture.width;
    if (m_source != m_box.picture() || m_background != background || !fits || !fills) {
        m_drawn = ui::blendOnto(ui::shrinkToFit(picture, width, height), toRgb(background));
        m_source = m_box.picture();
        m_background = background;
    }
    if (m_drawn.pixels.empty()) {
        return;
    }
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = m_drawn.width;
    info.bmiHeader.biHeight = -m_drawn.height; // rows from top to bottom
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    SetDIBitsToDevice(device, area.left + (width - m_drawn.width) / 2, area.top + (height - m_drawn.height) / 2,
                      static_cast<DWORD>(m_drawn.width), static_cast<DWORD>(m_drawn.height), 0, 0, 0,
                      static_cast<UINT>(m_drawn.height), m_drawn.pixels.data(), &info, DIB_RGB_COLORS);
}

// Centred both ways, wrapped, in the colour of text that is not to be acted on.
void PictureBoxPeer::drawText(HDC device, const RECT& area) const {
    const std::wstring text = toWide(m_box.text());
    constexpr UINT kFormat = DT_CENTER | DT_WORDBREAK | DT_NOPREFIX;
    RECT place = area;
    DrawTextW(device, text.c_str(), static_cast<int>(text.size()), &place, kFormat | DT_CALCRECT);
    const int height = place.bottom - place.top;
    place = area;
    place.top += std::max(0, (static_cast<int>(area.bottom - area.top) - height) / 2);
    SetBkMode(device, TRANSPARENT);
    SetTextColor(device, GetSysColor(COLOR_GRAYTEXT));
    DrawTextW(device, text.c_str(), static_cast<int>(text.size()), &place, kFormat);
}

} // namespace windows
