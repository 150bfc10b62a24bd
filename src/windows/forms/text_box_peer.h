// A text box's window: an edit control. A text that only grows costs what is added, not what is there already.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"
#include "windows/forms/edit_lines.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace windows {

class TextBoxPeer final : public ControlPeer {
public:
    TextBoxPeer(HWND window, ui::TextBox& box) noexcept;

    void command(WORD notification) override;

protected:
    void updateText() override;

private:
    void replace();
    void append();
    [[nodiscard]] std::wstring displayed(std::string_view part);

    ui::TextBox& m_box;
    bool m_breaksLines; // many lines, to be read only
    EditLines m_lines;
    std::uint64_t m_generation = 0;
    std::size_t m_shown = 0; // bytes of that generation that the window has
    bool m_updating = false; // the window's own changes while it is brought up to date are no person's
};

} // namespace windows
