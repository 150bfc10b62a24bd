// The western code page on any machine.
#pragma once

#include "ports/code_page.h"
#include "xml/code_page.h"

namespace fakes {

class FakeCodePage final : public ports::CodePage {
public:
    [[nodiscard]] std::string decode(std::string_view ansi) override { return xml::fromWindows1252(ansi); }
};

} // namespace fakes
