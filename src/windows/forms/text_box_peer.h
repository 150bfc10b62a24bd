// A text box's window: an edit control. One for many lines that are only to be read shows a growing text bit by bit:
// what is there already costs nothing, and a long text does not keep the window from answering.
#pragma once

#include "ui/controls.h"
#include "windows/forms/control_peer.h"
#include "windows/forms/edit_lines.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace windows {

class TextBoxPeer final : public ControlPeer {
public:
    TextBoxPeer(HWND window, ui::TextBox& box) noexcept;

    void command(WORD notification) override;
    [[nodiscard]] bool unfinished() const override { return m_lines && m_shown != m_box.text().size(); }

protected:
    void updateText() override;

private:
    void replace();
    void showMore();

    ui::TextBox& m_box;
    std::optional<EditLines> m_lines; // of a text that is only to be read
    std::uint64_t m_generation = 0;
    std::size_t m_shown = 0; // bytes of that generation that the window has
    bool m_updating = false; // the window's own changes while it is brought up to date are no person's
};

} // namespace windows
