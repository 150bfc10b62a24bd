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
        std::string out;
        for (const char16_t unit : base::toUtf16(utf8)) {
            out += byteOf(base::toUtf8(std::u16string(1, unit)));
        }
        return out;
    }

private:
    static char byteOf(const std::string& character) {
        for (int byte = 0; byte < 256; ++byte) {
            const char candidate = static_cast<char>(static_cast<unsigned char>(byte));
            if (xml::fromWindows1252(std::string(1, candidate)) == character) {
                return candidate;
            }
        }
        return '?';
    }
};

} // namespace fakes
