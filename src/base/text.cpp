#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <iterator>

namespace base {
namespace {

#include "base/upper_case_runs.inc"

constexpr char32_t kReplacement = 0xFFFD;

struct Decoded {
    char32_t codePoint;
    std::size_t length; // bytes taken
    bool valid;
};

// Decodes the code point at `i`; surrogates pass (the generalised form), anything malformed is one replacement byte.
Decoded decodeAt(std::string_view text, std::size_t i) noexcept {
    const auto byte = [&](std::size_t k) { return static_cast<unsigned char>(text[k]); };
    const unsigned char lead = byte(i);
    if (lead < 0x80) {
        return {lead, 1, true};
    }
    std::size_t length = 0;
    char32_t value = 0;
    char32_t least = 0;
    if (lead >= 0xC2 && lead <= 0xDF) {
        length = 2, value = lead & 0x1FU, least = 0x80;
    } else if ((lead & 0xF0U) == 0xE0U) {
        length = 3, value = lead & 0x0FU, least = 0x800;
    } else if (lead >= 0xF0 && lead <= 0xF4) {
        length = 4, value = lead & 0x07U, least = 0x10000;
    } else {
        return {kReplacement, 1, false};
    }
    if (i + length > text.size()) {
        return {kReplacement, 1, false};
    }
    for (std::size_t k = 1; k < length; ++k) {
        if (!continuesCharacter(text[i + k])) {
            return {kReplacement, 1, false};
        }
        value = (value << 6U) | (byte(i + k) & 0x3FU);
    }
    if (value < least || value > 0x10FFFF) {
        return {kReplacement, 1, false};
    }
    return {value, length, true};
}

void appendUtf8(std::string& out, char32_t c) {
    char bytes[4];
    out.append(bytes, encodeUtf8(c, bytes));
}

bool isHighSurrogate(char32_t c) noexcept {
    return c >= 0xD800 && c <= 0xDBFF;
}

bool isLowSurrogate(char32_t c) noexcept {
    return c >= 0xDC00 && c <= 0xDFFF;
}

char16_t upperUnit(char16_t unit) noexcept {
    const auto* run = std::lower_bound(std::begin(kUpperCaseRuns), std::end(kUpperCaseRuns), unit,
                                       [](const CaseRun& r, char16_t value) { return r.last < value; });
    if (run == std::end(kUpperCaseRuns) || unit < run->first || (unit - run->first) % run->stride != 0) {
        return unit;
    }
    return static_cast<char16_t>(unit + run->delta);
}

} // namespace

std::size_t encodeUtf8(char32_t c, char (&out)[4]) noexcept {
    std::size_t length = 0;
    const auto put = [&](char32_t bits) { out[length++] = static_cast<char>(static_cast<unsigned char>(bits)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0U | (c >> 6U));
    } else if (c < 0x10000) {
        put(0xE0U | (c >> 12U));
    } else {
        put(0xF0U | (c >> 18U));
        put(0x80U | ((c >> 12U) & 0x3FU));
    }
    if (c >= 0x800) {
        put(0x80U | ((c >> 6U) & 0x3FU));
    }
    if (c >= 0x80) {
        put(0x80U | (c & 0x3FU));
    }
    return length;
}

std::u16string toUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const Decoded d = decodeAt(utf8, i);
        i += d.length;
        if (d.codePoint < 0x10000) {
            out.push_back(static_cast<char16_t>(d.codePoint));
        } else {
            const char32_t c = d.codePoint - 0x10000;
            out.push_back(static_cast<char16_t>(0xD800 + (c >> 10U)));
            out.push_back(static_cast<char16_t>(0xDC00 + (c & 0x3FFU)));
        }
    }
    return out;
}

std::string toUtf8(std::u16string_view utf16) {
    std::string out;
    out.reserve(utf16.size());
    for (std::size_t i = 0; i < utf16.size(); ++i) {
        char32_t c = utf16[i];
        if (isHighSurrogate(c) && i + 1 < utf16.size() && isLowSurrogate(utf16[i + 1])) {
            c = 0x10000 + ((c - 0xD800) << 10U) + (utf16[i + 1] - 0xDC00U);
            ++i;
        }
        appendUtf8(out, c);
    }
    return out;
}

bool isValidUtf8(std::string_view bytes) noexcept {
    for (std::size_t i = 0; i < bytes.size();) {
        const Decoded d = decodeAt(bytes, i);
        if (!d.valid || isHighSurrogate(d.codePoint) || isLowSurrogate(d.codePoint)) {
            return false;
        }
        i += d.length;
    }
    return true;
}

bool isAscii(std::string_view text) noexcept {
    unsigned bits = 0; // of all bytes, without an early end: compilers make wide steps of this
    for (const char c : text) {
        bits |= static_cast<unsigned char>(c);
    }
    return bits < 0x80;
}

std::size_t utf16Length(std::string_view utf8) {
    std::size_t units = 0;
    for (std::size_t i = 0; i < utf8.size();) {
        const Decoded d = decodeAt(utf8, i);
        i += d.length;
        units += d.codePoint < 0x10000 ? 1 : 2;
    }
    return units;
}

std::string fromPosition(std::string_view utf8, std::size_t onePosition) {
    const std::u16string units = toUtf16(utf8);
    const std::size_t start = onePosition == 0 ? 0 : onePosition - 1;
    return start >= units.size() ? std::string() : toUtf8(std::u16string_view(units).substr(start));
}

std::string upperCase(std::string_view utf8) {
    std::string out;
    out.reserve(utf8.size());
    for (std::size_t i = 0; i < utf8.size();) {
        const auto lead = static_cast<unsigned char>(utf8[i]);
        if (lead < 0x80) {
            out.push_back(lead >= 'a' && lead <= 'z' ? static_cast<char>(lead - 'a' + 'A') : utf8[i]);
            ++i;
            continue;
        }
        const Decoded d = decodeAt(utf8, i);
        if (d.valid && d.codePoint < 0x10000) {
            appendUtf8(out, upperUnit(static_cast<char16_t>(d.codePoint)));
        } else {
            out.append(utf8.substr(i, d.length));
        }
        i += d.length;
    }
    return out;
}

bool equalInUpperCase(std::string_view a, std::string_view b) {
    const auto isAscii = [](char c) { return static_cast<unsigned char>(c) < 0x80; };
    std::size_t i = 0;
    while (i < a.size() && i < b.size() && isAscii(a[i]) && isAscii(b[i])) {
        if (toLowerAscii(a[i]) != toLowerAscii(b[i])) {
            return false;
        }
        ++i;
    }
    return (i == a.size() && i == b.size()) || upperCase(a.substr(i)) == upperCase(b.substr(i));
}

bool equalIgnoringAsciiCase(std::string_view a, std::string_view b) noexcept {
    return std::ranges::equal(a, b, {}, toLowerAscii, toLowerAscii);
}

// After Horspool: answers and requests of many megabytes are searched for names.
bool containsIgnoringCase(std::string_view bytes, std::string_view part) noexcept {
    if (part.empty()) {
        return true;
    }
    const auto equal = [](char a, char b) { return toLowerAscii(a) == toLowerAscii(b); };
    const auto index = [](char c) { return static_cast<unsigned char>(toLowerAscii(c)); };
    const std::size_t last = part.size() - 1;
    std::array<std::size_t, 256> step; // how far the part may move on, by the byte below its last one
    step.fill(part.size());
    for (std::size_t i = 0; i < last; ++i) {
        step[index(part[i])] = last - i;
    }
    for (std::size_t end = last; end < bytes.size(); end += step[index(bytes[end])]) {
        if (std::equal(part.rbegin(), part.rend(), bytes.rend() - static_cast<std::ptrdiff_t>(end + 1), equal)) {
            return true;
        }
    }
    return false;
}

bool saysYes(std::string_view text) {
    const std::string upper = upperCase(text);
    return upper == "TRUE" || upper == "YES" || upper == "-1" || upper == "1";
}

std::string_view trim(std::string_view text) noexcept {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace base
