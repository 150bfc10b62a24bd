#include "windows/forms/layout.h"

#include "windows/forms/dpi.h"

#include <algorithm>

namespace windows {
namespace {

// All templates use this size; the font's pixel height then tells which resolution the dialog manager laid out for
// (the system's, or the monitor's, depending on the Windows version).
constexpr int kFontPoints = 9;
constexpr int kPointsPerInch = 72;
// Templates keep this distance to the right and bottom edge; dialog units.
constexpr int kMargin = 7;

UINT dpiOfFont(const LOGFONTW& font, UINT fallback) noexcept {
    const int dpi = MulDiv(std::abs(static_cast<int>(font.lfHeight)), kPointsPerInch, kFontPoints);
    // The height is in whole pixels, so the quotient is near the true value: resolutions are multiples of 24.
    const int rounded = (dpi + 12) / 24 * 24;
    return rounded > 0 ? static_cast<UINT>(rounded) : fallback;
}

HFONT fontOf(HWND window) noexcept {
    return reinterpret_cast<HFONT>(SendMessageW(window, WM_GETFONT, 0, 0));
}

SIZE sizeOf(const RECT& rect) noexcept {
    return {rect.right - rect.left, rect.bottom - rect.top};
}

SIZE clientSize(HWND window) noexcept {
    RECT client{};
    GetClientRect(window, &client);
    return sizeOf(client);
}

// Moves one edge pair of a control: `start` and `end` are the distances of its sides from the container's start.
void applyAnchors(bool toStart, bool toEnd, int growth, LONG& start, LONG& end) noexcept {
    if (toEnd) {
        end += growth;
        start += toStart ? 0 : growth;
    }
}

} // namespace

Layout::Layout(HWND dialog) : m_dialog(dialog), m_designSize(clientSize(dialog)), m_designDpi(dpiOf(dialog)) {
    if (GetObjectW(fontOf(dialog), sizeof m_designFont, &m_designFont) != 0) {
        m_designDpi = dpiOfFont(m_designFont, m_designDpi);
    }
    m_dpi = m_designDpi;
}

void Layout::add(HWND window, const ui::Anchors& anchors, Margin margin) {
    RECT rect{};
    GetWindowRect(window, &rect);
    MapWindowPoints(nullptr, m_dialog, reinterpret_cast<POINT*>(&rect), 2);
    m_items.push_back({window, anchors, rect});
    // On a small screen the dialog may have come out smaller than its template says.
    RECT room{0, 0, kMargin, kMargin};
    if (margin == Margin::None) {
        room = {};
    }
    MapDialogRect(m_dialog, &room);
    m_designSize.cx = std::max(m_designSize.cx, rect.right + room.right);
    m_designSize.cy = std::max(m_designSize.cy, rect.bottom + room.bottom);
}

void Layout::setDpi(UINT dpi) {
    if (dpi == 0 || dpi == m_dpi) {
        return;
    }
    m_dpi = dpi;
    LOGFONTW description = m_designFont;
    description.lfHeight = scaled(m_designFont.lfHeight);
    UniqueFont font(CreateFontIndirectW(&description));
    if (!font) {
        return;
    }
    const auto use = [&](HWND window) {
        SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
    };
    use(m_dialog);
    for (const Item& item : m_items) {
        use(item.window);
    }
    m_font = std::move(font);
}

void Layout::arrange() const {
    const SIZE client = clientSize(m_dialog);
    const SIZE design = designSize();
    const SIZE growth{std::max(client.cx - design.cx, 0L), std::max(client.cy - design.cy, 0L)};
    HDWP moves = BeginDeferWindowPos(static_cast<int>(m_items.size()));
    for (const Item& item : m_items) {
        const RECT place = placeOf(item, growth);
        const SIZE size = sizeOf(place);
        if (moves != nullptr) {
            moves = DeferWindowPos(moves, item.window, nullptr, place.left, place.top, size.cx, size.cy,
                                   SWP_NOZORDER | SWP_NOACTIVATE);
        }
    }
    if (moves != nullptr) {
        EndDeferWindowPos(moves);
    }
    InvalidateRect(m_dialog, nullptr, TRUE);
}

SIZE Layout::designSize() const noexcept {
    return {scaled(m_designSize.cx), scaled(m_designSize.cy)};
}

SIZE Layout::minimumWindowSize() const noexcept {
    RECT window{};
    GetWindowRect(m_dialog, &window);
    const SIZE client = clientSize(m_dialog);
    const SIZE design = designSize();
    return {sizeOf(window).cx - client.cx + design.cx, sizeOf(window).cy - client.cy + design.cy};
}

int Layout::scaled(int length) const noexcept {
    return scale(length, m_dpi, m_designDpi);
}

RECT Layout::placeOf(const Item& item, SIZE growth) const noexcept {
    RECT place{scaled(item.design.left), scaled(item.design.top), scaled(item.design.right),
               scaled(item.design.bottom)};
    applyAnchors(item.anchors.left, item.anchors.right, growth.cx, place.left, place.right);
    applyAnchors(item.anchors.top, item.anchors.bottom, growth.cy, place.top, place.bottom);
    return place;
}

} // namespace windows
