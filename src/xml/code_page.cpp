#include "xml/code_page.h"

#include "base/text.h"

namespace xml {
namespace {

// The characters of 0x80 to 0x9F; all others have their own number.
constexpr unsigned kHighControls[32] = {0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021,
                                        0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0x008D, 0x017D, 0x008F,
                                        0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014,
                                        0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

} // namespace

char32_t decodeWindows1252(unsigned char byte) noexcept {
    return byte >= 0x80 && byte < 0xA0 ? kHighControls[byte - 0x80U] : byte;
}

std::string fromWindows1252(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 8);
    for (const char byte : bytes) {
        char utf8[4];
        text.append(utf8, base::encodeUtf8(decodeWindows1252(static_cast<unsigned char>(byte)), utf8));
    }
    return text;
}

} // namespace xml
