// The port to the user's ANSI code page, in which older files without an encoding are written.
// Real: windows/adapters; in tests western text: tests/fakes.
#pragma once

#include <string>
#include <string_view>

namespace ports {

class CodePage {
public:
    CodePage() = default;
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;
    virtual ~CodePage() = default;

    // ANSI bytes as UTF-8. Every byte has a result, so nothing is raised but 7 (out of memory).
    [[nodiscard]] virtual std::string decode(std::string_view ansi) = 0;

    // UTF-8 as ANSI bytes; a character that the code page does not have becomes "?".
    [[nodiscard]] virtual std::string encode(std::string_view utf8) = 0;
};

} // namespace ports
