// Text from elsewhere as an edit control can show it: its line breaks are pairs, and it takes a time that grows with
// the square of a line's length.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace windows {

// Takes a text part by part.
class EditLines {
public:
    static constexpr std::size_t kLongestLine = 1000; // UTF-16 units; a longer one goes on in the next

    // The part with lone line feeds as line breaks, lines cut, and NUL, where the control would stop, as U+FFFD.
    [[nodiscard]] std::wstring add(std::wstring_view part);

private:
    std::size_t m_length = 0; // of the line so far
    bool m_afterReturn = false;
};

} // namespace windows
