#include "windows/forms/combo_box_peer.h"

#include "windows/base/wide.h"

#include <string>

namespace windows {

void ComboBoxPeer::update(Aspects aspects) {
    if (aspects.has(ui::Aspect::Items)) {
        updateItems();
    }
    if (aspects.has(ui::Aspect::Items) || aspects.has(ui::Aspect::Selection)) {
        updateSelection();
    }
}

void ComboBoxPeer::command(WORD notification) {
    if (notification != CBN_SELCHANGE) {
        return;
    }
    const LRESULT index = SendMessageW(window(), CB_GETCURSEL, 0, 0);
    if (index >= 0) {
        m_box.userSelect(static_cast<std::size_t>(index));
    }
}

void ComboBoxPeer::updateItems() {
    SendMessageW(window(), CB_RESETCONTENT, 0, 0);
    for (const std::string& item : m_box.items()) {
        SendMessageW(window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(toWide(item).c_str()));
    }
}

void ComboBoxPeer::updateSelection() {
    const auto wanted = m_box.selected() ? static_cast<LRESULT>(*m_box.selected()) : CB_ERR;
    if (SendMessageW(window(), CB_GETCURSEL, 0, 0) != wanted) {
        SendMessageW(window(), CB_SETCURSEL, static_cast<WPARAM>(wanted), 0);
    }
}

} // namespace windows
