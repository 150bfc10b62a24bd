// The western code page on any machine.
#pragma once

#include "base/text.h"
#include "ports/code_page.h"
#include "xml/code_page.h"

#include <string>
#include <string_view>

namespace fakes {

class FakeCodePage final : public ports::CodePage {
public:
    [[nodiscard]] std::string decode(std::string_view ansi) override { return xml::fromWindows1252(ansi); }

    [[nodiscard]] std::string encode(std::string_view utf8) override {
        if (base::isAscii(utf8)) {
            return std::string(utf8);
        }
        static const std::u16string units = unitsOfBytes(); // by byte
        std::string out;
        for (const char16_t unit : base::toUtf16(utf8)) {
            const std::size_t byte = units.find(unit);
            out += byte == units.npos ? '?' : static_cast<char>(static_cast<unsigned char>(byte));
        }
        return out;
    }

private:
    static std::u16string unitsOfBytes() {
        std::string bytes;
        for (unsigned byte = 0; byte < 256; ++byte) {
            bytes += static_cast<char>(static_cast<unsigned char>(byte));
        }
        return base::toUtf16(xml::fromWindows1252(bytes));
    }
};

} // namespace fakes
