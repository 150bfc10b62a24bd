#include "connection/transfer_text.h"

#include "base/text.h"

#include <algorithm>
#include <utility>

namespace connection {
namespace {

constexpr std::string_view kMore = "\r\n(There is more than 4 MB; the rest is not shown.)";

// How many bytes a UTF-8 character has that begins so.
std::size_t lengthOf(char lead) noexcept {
    const auto byte = static_cast<unsigned char>(lead);
    return byte >= 0xF0 ? 4 : byte >= 0xE0 ? 3 : byte >= 0xC0 ? 2 : 1;
}

// The length of the text without a character at its end that is cut off.
std::size_t wholeCharacters(std::string_view text) noexcept {
    constexpr std::size_t kMostContinued = 3;
    for (std::size_t back = 1; back <= std::min(text.size(), kMostContinued); ++back) {
        const char byte = text[text.size() - back];
        if (!base::continuesCharacter(byte)) {
            return lengthOf(byte) > back ? text.size() - back : text.size();
        }
    }
    return text.size();
}

} // namespace

std::string TransferText::header(std::string_view field, std::string_view value) {
    return limited("http header: " + std::string(field) + ": " + std::string(value) + "\r\n");
}

std::string TransferText::data(std::string_view bytes) {
    if (m_full) {
        return {};
    }
    std::string text = std::exchange(m_waiting, {}).append(bytes);
    const std::size_t whole = wholeCharacters(text);
    m_waiting = text.substr(whole);
    text.resize(whole);
    return limited(std::move(text));
}

std::string TransferText::end() {
    return limited(std::exchange(m_waiting, {}));
}

std::string TransferText::limited(std::string text) {
    if (m_full) {
        return {};
    }
    const std::size_t room = kLimit - m_length;
    m_length += text.size();
    if (text.size() > room) {
        m_full = true;
        text.resize(wholeCharacters(std::string_view(text).substr(0, room)));
        text += kMore;
    }
    return text;
}

} // namespace connection
