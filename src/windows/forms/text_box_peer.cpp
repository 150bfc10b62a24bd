#include "windows/forms/text_box_peer.h"

#include "windows/adapters/wide.h"
#include "windows/forms/window_text.h"

namespace windows {
namespace {

bool showsLines(HWND edit) noexcept {
    constexpr LONG kManyToRead = ES_MULTILINE | ES_READONLY;
    return (GetWindowLongW(edit, GWL_STYLE) & kManyToRead) == kManyToRead;
}

} // namespace

TextBoxPeer::TextBoxPeer(HWND window, ui::TextBox& box) noexcept
    : ControlPeer(window, box), m_box(box), m_breaksLines(showsLines(window)) {
    SendMessageW(window, EM_SETLIMITTEXT, 0, 0); // as long as the platform allows, not the 30,000 it starts with
}

void TextBoxPeer::command(WORD notification) {
    if (m_updating || notification != EN_CHANGE) {
        return;
    }
    const std::string text = fromWide(windowText(window()));
    m_box.userText(text);
    if (m_box.text() != text) { // it took only some of it
        m_updating = true;
        replace();
        m_updating = false;
    }
    m_generation = m_box.generation();
    m_shown = m_box.text().size();
}

void TextBoxPeer::updateText() {
    const bool grown = m_generation == m_box.generation();
    if (grown && m_shown == m_box.text().size()) {
        return;
    }
    m_updating = true;
    if (grown) {
        append();
    } else {
        replace();
    }
    m_updating = false;
    m_generation = m_box.generation();
    m_shown = m_box.text().size();
}

// The caret stays where it was, as far as the text goes.
void TextBoxPeer::replace() {
    m_lines = {};
    const std::wstring text = displayed(m_box.text());
    if (text == windowText(window())) {
        return;
    }
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(window(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    SetWindowTextW(window(), text.c_str());
    SendMessageW(window(), EM_SETSEL, start, static_cast<LPARAM>(end));
}

void TextBoxPeer::append() {
    const std::wstring tail = displayed(std::string_view(m_box.text()).substr(m_shown));
    const auto end = static_cast<WPARAM>(GetWindowTextLengthW(window()));
    SendMessageW(window(), EM_SETSEL, end, static_cast<LPARAM>(end));
    SendMessageW(window(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(tail.c_str()));
}

std::wstring TextBoxPeer::displayed(std::string_view part) {
    return m_breaksLines ? m_lines.add(toWide(part)) : toWide(part);
}

} // namespace windows
