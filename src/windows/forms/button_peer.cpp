#include "windows/forms/button_peer.h"

#include "windows/base/handles.h"
#include "windows/base/wide.h"
#include "windows/forms/paint_color.h"

#include <string>

namespace windows {
namespace {

// Black or white, whichever can be read on that colour.
COLORREF readableOn(COLORREF background) noexcept {
    constexpr int kHalf = 128'000; // of the luminance, in thousandths of a step
    const int luminance = 299 * GetRValue(background) + 587 * GetGValue(background) + 114 * GetBValue(background);
    return luminance < kHalf ? RGB(255, 255, 255) : RGB(0, 0, 0);
}

} // namespace

void ButtonPeer::update(Aspects aspects) {
    ControlPeer::update(aspects);
    if (aspects.has(ui::Aspect::Colors) && m_button.backColor()) {
        SendMessageW(window(), BM_SETSTYLE, BS_OWNERDRAW, TRUE);
    }
}

void ButtonPeer::draw(const DRAWITEMSTRUCT& item) {
    const COLORREF background = toColorRef(m_button.backColor().value_or(ui::color::kButtonFace));
    const bool pressed = (item.itemState & ODS_SELECTED) != 0;
    RECT area = item.rcItem;
    const UniqueBrush brush(CreateSolidBrush(background));
    FillRect(item.hDC, &area, brush.get());
    DrawEdge(item.hDC, &area, pressed ? EDGE_SUNKEN : EDGE_RAISED, BF_RECT);
    if (pressed) {
        OffsetRect(&area, 1, 1);
    }
    const std::wstring text = toWide(m_button.text());
    SetBkMode(item.hDC, TRANSPARENT);
    SetTextColor(item.hDC, (item.itemState & ODS_DISABLED) != 0 ? GetSysColor(COLOR_GRAYTEXT) : readableOn(background));
    DrawTextW(item.hDC, text.c_str(), static_cast<int>(text.size()), &area, DT_CENTER | DT_VCENTER | DT_SINGLELINE);
    if ((item.itemState & ODS_FOCUS) != 0) {
        InflateRect(&area, -3, -3);
        DrawFocusRect(item.hDC, &area);
    }
}

} // namespace windows
