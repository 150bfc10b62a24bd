#include "windows/forms/tab_strip_peer.h"

#include "windows/base/wide.h"

#include <string>

#include <commctrl.h>

namespace windows {

void TabStripPeer::update(Aspects aspects) {
    if (aspects.has(ui::Aspect::Items)) {
        updateTabs();
    }
    if (aspects.has(ui::Aspect::Items) || aspects.has(ui::Aspect::Selection)) {
        updateSelection();
    }
}

void TabStripPeer::notify(NMHDR& header) {
    if (header.code == TCN_SELCHANGE) {
        m_strip.userSelect(static_cast<std::size_t>(SendMessageW(window(), TCM_GETCURSEL, 0, 0)));
        updateSelection();
    }
}

void TabStripPeer::updateTabs() {
    SendMessageW(window(), TCM_DELETEALLITEMS, 0, 0);
    for (std::size_t index = 0; index < m_strip.tabs().size(); ++index) {
        std::wstring title = toWide(m_strip.tabs()[index].title);
        TCITEMW item{};
        item.mask = TCIF_TEXT;
        item.pszText = title.data();
        SendMessageW(window(), TCM_INSERTITEMW, index, reinterpret_cast<LPARAM>(&item));
    }
    cutOffPane();
}

void TabStripPeer::updateSelection() {
    SendMessageW(window(), TCM_SETCURSEL, m_strip.selected(), 0);
}

void TabStripPeer::cutOffPane() {
    constexpr int kLine = 2; // pixels
    RECT tab{};
    if (SendMessageW(window(), TCM_GETITEMRECT, 0, reinterpret_cast<LPARAM>(&tab)) != FALSE) {
        RECT all{};
        GetClientRect(window(), &all);
        SetWindowRgn(window(), CreateRectRgn(0, 0, all.right, tab.bottom + kLine), TRUE); // which owns the region then
    }
}

} // namespace windows
