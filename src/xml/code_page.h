// The western Windows code page, which old link documents were written in.
#pragma once

#include <string>
#include <string_view>

namespace xml {

// The five bytes without a meaning become the control characters of the same number, as Windows has it, so every byte
// has a result.
[[nodiscard]] char32_t decodeWindows1252(unsigned char byte) noexcept;

[[nodiscard]] std::string fromWindows1252(std::string_view bytes);

} // namespace xml
