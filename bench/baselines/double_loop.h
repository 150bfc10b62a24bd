// Every code against every name.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace baselines {

// (position of the code, position of the name), ordered by code, then by name.
inline std::vector<std::pair<std::uint32_t, std::uint32_t>> doubleLoop(const std::vector<std::string>& codes,
                                                                       const std::vector<std::string>& names) {
    std::vector<std::pair<std::uint32_t, std::uint32_t>> pairs;
    for (std::uint32_t code = 0; code < codes.size(); ++code) {
        for (std::uint32_t name = 0; name < names.size(); ++name) {
            if (names[name].find(codes[code]) != std::string::npos) {
                pairs.emplace_back(code, name);
            }
        }
    }
    return pairs;
}

} // namespace baselines
