// What the test page shows of an answer: its headers line by line, then its data as it comes.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace connection {

// Each method returns what is to be shown behind everything before. After kLimit bytes a last line says that there was
// more, and nothing follows.
class TransferText {
public:
    static constexpr std::size_t kLimit = 4 * 1024 * 1024; // bytes of UTF-8

    [[nodiscard]] std::string header(std::string_view field, std::string_view value);
    // A character of which only the first bytes are here waits for the rest.
    [[nodiscard]] std::string data(std::string_view bytes);
    // What still waits.
    [[nodiscard]] std::string end();

private:
    [[nodiscard]] std::string limited(std::string text);

    std::string m_waiting;
    std::size_t m_length = 0;
    bool m_full = false;
};

} // namespace connection
