// Price-list lines of any bytes: no line holds a line break, and together they hold every other character.
#include "fakes/fake_code_page.h"
#include "images/price_list.h"

#include <cstdint>
#include <cstdlib>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    fakes::FakeCodePage ansi;
    std::string joined;
    for (const std::string& line : images::priceListLines(bytes, ansi)) {
        if (line.find_first_of("\r\n") != std::string::npos) {
            std::abort();
        }
        joined += line;
    }
    std::string expected = bytes.starts_with("\xEF\xBB\xBF") ? std::string(bytes.substr(3)) : ansi.decode(bytes);
    std::erase_if(expected, [](char c) { return c == '\r' || c == '\n'; });
    if (joined != expected) {
        std::abort();
    }
    return 0;
}
