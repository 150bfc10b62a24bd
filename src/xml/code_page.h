// The western Windows code page, which old link documents were written in.
#pragma once

#include <string>
#include <string_view>

namespace xml {

inline constexpr int kLongestWindows1252 = 3;

// Writes one windows-1252 byte as UTF-8 and returns the length, 1 to 3. The five bytes without a meaning become the
// control characters of the same number, as Windows has it, so every byte has a result.
int encodeWindows1252(unsigned char byte, char (&utf8)[kLongestWindows1252]) noexcept;

[[nodiscard]] std::string fromWindows1252(std::string_view bytes);

} // namespace xml
