// Text rules that do not depend on the machine: UTF-8 inside, UTF-16 units where lengths and positions count.
//
// A std::string holds UTF-8, generalised so that a lone surrogate of a host's string is three bytes (ED A0..BF xx):
// whatever a host passes in comes back out unchanged. Bytes that are not UTF-8 count as U+FFFD, one per byte.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace base {

[[nodiscard]] std::u16string toUtf16(std::string_view utf8);
[[nodiscard]] std::string toUtf8(std::u16string_view utf16);

// The bytes of one code point (at most U+10FFFF), as many as the result says.
[[nodiscard]] std::size_t encodeUtf8(char32_t codePoint, char (&out)[4]) noexcept;

// Inside a character: not its first byte.
[[nodiscard]] constexpr bool continuesCharacter(char byte) noexcept {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

// True when the bytes are strict UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF.
[[nodiscard]] bool isValidUtf8(std::string_view bytes) noexcept;

[[nodiscard]] bool isAscii(std::string_view text) noexcept;

// Length in UTF-16 units, the way positions and lengths in automation strings count.
[[nodiscard]] std::size_t utf16Length(std::string_view utf8);

// The text from the one-based UTF-16 position onward; empty when the position lies past the end.
// A position inside a surrogate pair starts with the lone low surrogate.
[[nodiscard]] std::string fromPosition(std::string_view utf8, std::size_t onePosition);

// Simple one-to-one Unicode upper case, independent of the user's locale (so the same in Turkey): "e acute" becomes
// "E acute", sharp s and dotless i stay as they are.
[[nodiscard]] std::string upperCase(std::string_view utf8);
// The same as comparing both in upper case, without the copies for plain text.
[[nodiscard]] bool equalInUpperCase(std::string_view a, std::string_view b);

// A to Z in lower case; every other byte stays.
[[nodiscard]] constexpr char toLowerAscii(char c) noexcept {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}
// For names that are ASCII by definition, such as those of HTTP headers and devices.
[[nodiscard]] bool equalIgnoringAsciiCase(std::string_view a, std::string_view b) noexcept;

// Letter case ignored, for a `part` of ASCII characters; any bytes may be searched.
[[nodiscard]] bool containsIgnoringCase(std::string_view bytes, std::string_view part) noexcept;

// What a switch in a document or of a host says: "true", "yes", "-1" and "1", in any letter case.
[[nodiscard]] bool saysYes(std::string_view text);

// Without leading and trailing blanks (U+0020 only; tabs and no-break blanks stay).
[[nodiscard]] std::string_view trim(std::string_view text) noexcept;

} // namespace base
