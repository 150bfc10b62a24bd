// The index over picture names against the plain loop. Input: names, one a line, then codes after an empty line.
#include "images/name_index.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::vector<std::string> lines(1);
    for (std::size_t i = 0; i < size; ++i) {
        if (data[i] == '\n') {
            lines.emplace_back();
        } else {
            lines.back().push_back(static_cast<char>(data[i]));
        }
    }
    std::size_t empty = 0;
    while (empty < lines.size() && !lines[empty].empty()) {
        ++empty;
    }
    const std::vector<std::string> names(lines.begin(), lines.begin() + static_cast<std::ptrdiff_t>(empty));
    const images::NameIndex index(names);
    std::vector<std::uint32_t> found;
    for (std::size_t c = empty; c < lines.size(); ++c) {
        std::vector<std::uint32_t> expected;
        for (std::uint32_t n = 0; n < names.size(); ++n) {
            if (names[n].find(lines[c]) != std::string::npos) {
                expected.push_back(n);
            }
        }
        index.find(lines[c], found);
        if (found != expected) {
            std::abort();
        }
    }
    return 0;
}
