// A list's window. Lines are pushed in batches with painting off: one by one, each costs milliseconds.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"

#include <cstddef>
#include <cstdint>
#include <string>

namespace windows {

class ListBoxPeer final : public ControlPeer {
public:
    ListBoxPeer(HWND window, ui::ListBox& list) noexcept : ControlPeer(window, list), m_list(list) {}

    void update(Aspects aspects) override;
    void command(WORD notification) override;
    void fontChanged(UINT dpi) override;

private:
    void updateItems();
    void updateSelection();
    void clear();
    void append();
    // The width in pixels that the list can be scrolled over; never shrinks but by clear() and a new font.
    void setExtent(int extent);

    ui::ListBox& m_list;
    std::uint64_t m_generation = 0;
    std::size_t m_shown = 0; // lines of that generation that the window has
    int m_extent = 0;        // pixels
};

} // namespace windows
