// The plain save that the crash-safe one is measured against: truncate the file, write it, flush it to the disk.
#pragma once

#include <cstddef>

namespace baselines {

// False when any step fails.
[[nodiscard]] bool truncateWriteFlush(const char* path, const void* bytes, std::size_t size);

} // namespace baselines
