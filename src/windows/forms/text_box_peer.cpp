#include "windows/forms/text_box_peer.h"

#include "windows/adapters/wide.h"
#include "windows/forms/window_text.h"

namespace windows {

TextBoxPeer::TextBoxPeer(HWND window, ui::TextBox& box) noexcept : ControlPeer(window, box), m_box(box) {
    SendMessageW(window, EM_SETLIMITTEXT, 0, 0); // as long as the platform allows, not the 30,000 it starts with
}

void TextBoxPeer::command(WORD notification) {
    // Also arrives when our own update sets the text; the object then has that text already and nothing happens.
    if (notification == EN_CHANGE) {
        m_box.userText(fromWide(windowText(window())));
    }
}

} // namespace windows
