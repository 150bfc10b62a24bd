#include "windows/forms/text_box_peer.h"

#include "base/text.h"

#include "windows/base/wide.h"
#include "windows/forms/window_text.h"

#include <algorithm>
#include <string>
#include <string_view>

namespace windows {
namespace {

// What an edit control takes in well under a tenth of a second; bytes.
constexpr std::size_t kAtOnce = 16 * 1024;

bool isForReadingLines(HWND edit) noexcept {
    constexpr LONG kStyle = ES_MULTILINE | ES_READONLY;
    return (GetWindowLongW(edit, GWL_STYLE) & kStyle) == kStyle;
}

} // namespace

TextBoxPeer::TextBoxPeer(HWND window, ui::TextBox& box) noexcept : ControlPeer(window, box), m_box(box) {
    SendMessageW(window, EM_SETLIMITTEXT, 0, 0); // as long as the platform allows, not the 30,000 it starts with
    if (isForReadingLines(window)) {
        m_lines.emplace();
    }
}

void TextBoxPeer::command(WORD notification) {
    if (m_updating || m_lines || notification != EN_CHANGE) {
        return;
    }
    const std::string text = fromWide(windowText(window()));
    m_box.userText(text);
    if (m_box.text() != text) { // it took only some of it
        updateText();
    }
}

void TextBoxPeer::updateText() {
    m_updating = true;
    if (m_lines) {
        showMore();
    } else {
        replace();
    }
    m_updating = false;
}

// The caret stays where it was, as far as the text goes.
void TextBoxPeer::replace() {
    DWORD start = 0;
    DWORD end = 0;
    SendMessageW(window(), EM_GETSEL, reinterpret_cast<WPARAM>(&start), reinterpret_cast<LPARAM>(&end));
    ControlPeer::updateText();
    SendMessageW(window(), EM_SETSEL, start, static_cast<LPARAM>(end));
}

void TextBoxPeer::showMore() {
    if (m_generation != m_box.generation()) {
        m_generation = m_box.generation();
        m_shown = 0;
        m_lines.emplace();
        SetWindowTextW(window(), L"");
    }
    const std::string& text = m_box.text();
    std::size_t end = std::min(m_shown + kAtOnce, text.size());
    while (end < text.size() && base::continuesCharacter(text[end])) {
        ++end;
    }
    const std::wstring part = m_lines->add(toWide(std::string_view(text).substr(m_shown, end - m_shown)));
    m_shown = end;
    const auto last = static_cast<WPARAM>(GetWindowTextLengthW(window()));
    SendMessageW(window(), EM_SETSEL, last, static_cast<LPARAM>(last));
    SendMessageW(window(), EM_REPLACESEL, FALSE, reinterpret_cast<LPARAM>(part.c_str()));
}

} // namespace windows
