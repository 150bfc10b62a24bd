// All occurrences of many codes in many names by one scan: the textbook automaton, dense, over the bytes that occur in
// the codes.
#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace baselines {

// (position of the code, position of the name), each pair once, ordered by code, then by name. Codes are not empty.
std::vector<std::pair<std::uint32_t, std::uint32_t>> ahoCorasick(const std::vector<std::string>& codes,
                                                                 const std::vector<std::string>& names);

} // namespace baselines
