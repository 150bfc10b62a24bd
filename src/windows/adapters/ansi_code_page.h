// The user's ANSI code page as Windows has it.
#pragma once

#include "ports/code_page.h"

namespace windows {

class AnsiCodePage final : public ports::CodePage {
public:
    [[nodiscard]] std::string decode(std::string_view ansi) override;
};

} // namespace windows
