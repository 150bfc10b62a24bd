#include "windows/forms/list_view_peer.h"

#include "windows/base/wide.h"

#include <numeric>
#include <utility>

namespace windows {
namespace {

bool isChecked(HWND list, std::size_t row) noexcept {
    return ListView_GetCheckState(list, static_cast<int>(row)) != 0;
}

} // namespace

ListViewPeer::ListViewPeer(HWND window, ui::ListView& list) : ControlPeer(window, list), m_list(list) {
    ListView_SetExtendedListViewStyle(window, LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP);
    int index = 0;
    for (const ui::ListView::Column& column : list.columns()) {
        std::wstring title = toWide(column.title);
        LVCOLUMNW description{};
        description.mask = LVCF_TEXT | LVCF_SUBITEM;
        description.pszText = title.data();
        description.iSubItem = index;
        SendMessageW(window, LVM_INSERTCOLUMNW, static_cast<WPARAM>(index), reinterpret_cast<LPARAM>(&description));
        ++index;
    }
    resized();
}

// The columns share the width that is left beside a scroll bar.
void ListViewPeer::resized() {
    RECT area{};
    GetWindowRect(window(), &area);
    const int width = area.right - area.left - GetSystemMetrics(SM_CXVSCROLL) - 2 * GetSystemMetrics(SM_CXEDGE);
    const auto& columns = m_list.columns();
    const int shares = std::accumulate(columns.begin(), columns.end(), 0,
                                       [](int sum, const ui::ListView::Column& column) { return sum + column.share; });
    int index = 0;
    for (const ui::ListView::Column& column : columns) {
        ListView_SetColumnWidth(window(), index, MulDiv(width, column.share, shares));
        ++index;
    }
}

void ListViewPeer::update(Aspects aspects) {
    m_filling = true;
    if (aspects.has(ui::Aspect::Items)) {
        updateRows();
    }
    if (aspects.has(ui::Aspect::Value)) {
        updateChecks();
    }
    if (aspects.has(ui::Aspect::Text)) {
        InvalidateRect(window(), nullptr, FALSE);
    }
    m_filling = false;
}

void ListViewPeer::updateRows() {
    SendMessageW(window(), WM_SETREDRAW, FALSE, 0);
    if (std::exchange(m_generation, m_list.generation()) != m_list.generation()) {
        ListView_DeleteAllItems(window());
        m_shown = 0;
    }
    const bool wasEmpty = m_shown == 0;
    ListView_SetItemCount(window(), static_cast<int>(m_list.rowCount()));
    for (; m_shown < m_list.rowCount(); ++m_shown) {
        LVITEMW item{};
        item.mask = LVIF_TEXT;
        item.iItem = static_cast<int>(m_shown);
        item.pszText = LPSTR_TEXTCALLBACKW;
        SendMessageW(window(), LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        for (std::size_t column = 1; column < m_list.columns().size(); ++column) {
            item.iSubItem = static_cast<int>(column);
            SendMessageW(window(), LVM_SETITEMW, 0, reinterpret_cast<LPARAM>(&item));
        }
    }
    updateChecks();
    if (wasEmpty) { // so that the space bar ticks something before an arrow key was used
        constexpr UINT kCurrent = LVIS_FOCUSED | LVIS_SELECTED;
        ListView_SetItemState(window(), 0, kCurrent, kCurrent);
    }
    SendMessageW(window(), WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window(), nullptr, TRUE);
}

void ListViewPeer::updateChecks() {
    for (std::size_t row = 0; row < m_shown; ++row) {
        if (isChecked(window(), row) != m_list.checked(row)) {
            ListView_SetCheckState(window(), static_cast<UINT>(row), m_list.checked(row) ? TRUE : FALSE);
        }
    }
}

void ListViewPeer::notify(NMHDR& header) {
    if (header.code == LVN_GETDISPINFOW) {
        provideText(reinterpret_cast<NMLVDISPINFOW&>(header).item);
    } else if (header.code == LVN_ITEMCHANGED) {
        itemChanged(reinterpret_cast<const NMLISTVIEW&>(header));
    }
}

void ListViewPeer::provideText(LVITEMW& item) {
    const auto row = static_cast<std::size_t>(item.iItem);
    const auto column = static_cast<std::size_t>(item.iSubItem);
    if ((item.mask & LVIF_TEXT) != 0 && row < m_list.rowCount() && column < m_list.columns().size()) {
        m_text = toWide(m_list.cell(row, column));
        item.pszText = m_text.data();
    }
}

void ListViewPeer::itemChanged(const NMLISTVIEW& change) {
    const auto row = static_cast<std::size_t>(change.iItem);
    if (m_filling || change.iItem < 0 || ((change.uNewState ^ change.uOldState) & LVIS_STATEIMAGEMASK) == 0) {
        return;
    }
    m_list.userCheck(row, isChecked(window(), row));
    m_filling = true;
    updateChecks(); // a handler may have ticked it again, or the list does not take clicks at present
    m_filling = false;
}

} // namespace windows
