// What any extraction costs at least: the same files, made and filled by the system's own calls from memory.
#pragma once

#include <cstdint>

namespace baselines {

// Makes the file with this path and writes `size` bytes, in pieces of 32,768. False when any step fails.
[[nodiscard]] bool createFile(const char* path, std::uint32_t size);

} // namespace baselines
