// The lines of a price-list file as the host writes it.
#pragma once

#include "ports/code_page.h"

#include <string>
#include <string_view>
#include <vector>

namespace images {

// CR LF, LF or a lone CR ends a line; a last line without one counts, a final one adds no empty line. The bytes are in
// the user's ANSI code page, or UTF-8 where they begin with its mark (which belongs to no line).
[[nodiscard]] std::vector<std::string> priceListLines(std::string_view bytes, ports::CodePage& ansi);

} // namespace images
