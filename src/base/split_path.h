// Paths as text: where the name in them begins.
#pragma once

#include <string_view>

namespace base {

struct SplitPath {
    std::string_view folder; // with its final backslash, or empty
    std::string_view file;
};

// Divides a name behind its last backslash. The parts refer to the name.
[[nodiscard]] SplitPath splitPath(std::string_view name) noexcept;

// The name behind the last separator of either kind.
[[nodiscard]] std::string_view nameWithoutFolder(std::string_view name) noexcept;

} // namespace base
