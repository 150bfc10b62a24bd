#include "windows/forms/framed_bar_peer.h"

#include "windows/base/handles.h"
#include "windows/forms/paint_color.h"

namespace windows {
namespace {

void fill(HDC device, const RECT& area, ui::Color color) noexcept {
    const UniqueBrush brush(CreateSolidBrush(toColorRef(color)));
    FillRect(device, &area, brush.get());
}

constexpr ui::Color kSelectedItem = 0x8000000D;

} // namespace

void FramedBarPeer::update(Aspects aspects) {
    if (aspects.has(ui::Aspect::Value) || aspects.has(ui::Aspect::Colors)) {
        InvalidateRect(window(), nullptr, FALSE);
    }
}

void FramedBarPeer::draw(const DRAWITEMSTRUCT& item) {
    RECT inner = item.rcItem;
    FrameRect(item.hDC, &inner, GetSysColorBrush(COLOR_BTNSHADOW));
    InflateRect(&inner, -1, -1);
    RECT rest = inner;
    inner.right = inner.left + MulDiv(inner.right - inner.left, m_bar.barWidth(), ui::FramedBar::kFrameWidth);
    rest.left = inner.right;
    fill(item.hDC, inner, kSelectedItem);
    fill(item.hDC, rest, m_bar.backColor().value_or(ui::color::kLight3d));
}

} // namespace windows
