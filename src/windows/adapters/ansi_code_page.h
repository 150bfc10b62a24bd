// The user's ANSI code page as Windows has it.
#pragma once

#include "ports/code_page.h"

namespace windows {

class AnsiCodePage final : public ports::CodePage {
public:
    [[nodiscard]] std::string decode(std::string_view ansi) override;
    [[nodiscard]] std::string encode(std::string_view utf8) override;
};

} // namespace windows
