// A list view's window. It asks for the texts of the rows that it paints, so that ten thousand rows cost no copies.
#pragma once

#include "ui/list_view.h"
#include "windows/forms/control_peer.h"

#include <string>

#include <commctrl.h>

namespace windows {

class ListViewPeer final : public ControlPeer {
public:
    ListViewPeer(HWND window, ui::ListView& list);

    void update(Aspects aspects) override;
    void notify(NMHDR& header) override;
    void resized() override;

private:
    void updateRows();
    void updateChecks();
    void provideText(LVITEMW& item);
    void itemChanged(const NMLISTVIEW& change);

    ui::ListView& m_list;
    std::uint64_t m_generation = 0;
    std::size_t m_shown = 0; // rows of that generation that the window has
    std::wstring m_text;     // what the window was given last; it reads it before it asks again
    bool m_filling = false;  // the window's own changes while it is filled are no person's
};

} // namespace windows
