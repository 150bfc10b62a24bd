#include "windows/forms/list_box_peer.h"

#include "windows/base/wide.h"
#include "windows/forms/device_context.h"

#include <algorithm>

namespace windows {
namespace {

// Room behind the longest line, so that its end does not stick to the border.
constexpr int kExtentSlack = 8;

int widthOf(HDC device, const std::wstring& line) noexcept {
    SIZE size{};
    GetTextExtentPoint32W(device, line.c_str(), static_cast<int>(line.size()), &size);
    return size.cx + kExtentSlack;
}

} // namespace

void ListBoxPeer::update(Aspects aspects) {
    if (aspects.has(ui::Aspect::Items)) {
        updateItems();
    }
    if (aspects.has(ui::Aspect::Selection)) {
        updateSelection();
    }
}

void ListBoxPeer::command(WORD notification) {
    const LRESULT index = SendMessageW(window(), LB_GETCURSEL, 0, 0);
    if (index < 0) {
        return;
    }
    if (notification == LBN_SELCHANGE) {
        m_list.userSelect(static_cast<std::size_t>(index));
    } else if (notification == LBN_DBLCLK) {
        m_list.userDoubleClick(static_cast<std::size_t>(index));
    }
}

void ListBoxPeer::updateItems() {
    const bool fresh = m_list.generation() == m_generation;
    if (fresh && m_shown == m_list.items().size()) {
        return;
    }
    SendMessageW(window(), WM_SETREDRAW, FALSE, 0);
    if (!fresh) {
        clear();
    }
    append();
    SendMessageW(window(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window(), nullptr, TRUE);
}

void ListBoxPeer::clear() {
    SendMessageW(window(), LB_RESETCONTENT, 0, 0);
    m_generation = m_list.generation();
    m_shown = 0;
    setExtent(0);
}

void ListBoxPeer::append() {
    const WindowDeviceContext device(window());
    int extent = m_extent;
    for (; m_shown < m_list.items().size(); ++m_shown) {
        const std::wstring line = toWide(m_list.items()[m_shown]);
        SendMessageW(window(), LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(line.c_str()));
        extent = std::max(extent, widthOf(device.handle(), line));
    }
    setExtent(extent);
}

void ListBoxPeer::fontChanged(UINT /*dpi*/) {
    const WindowDeviceContext device(window());
    int extent = 0;
    for (std::size_t index = 0; index < m_shown; ++index) {
        extent = std::max(extent, widthOf(device.handle(), toWide(m_list.items()[index])));
    }
    setExtent(extent);
}

void ListBoxPeer::setExtent(int extent) {
    if (m_extent != extent) {
        m_extent = extent;
        SendMessageW(window(), LB_SETHORIZONTALEXTENT, static_cast<WPARAM>(extent), 0);
    }
}

void ListBoxPeer::updateSelection() {
    const auto wanted = m_list.selected() ? static_cast<LRESULT>(*m_list.selected()) : LB_ERR;
    if (SendMessageW(window(), LB_GETCURSEL, 0, 0) != wanted) {
        SendMessageW(window(), LB_SETCURSEL, static_cast<WPARAM>(wanted), 0);
    }
}

} // namespace windows
