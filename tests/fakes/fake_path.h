// How Windows reads a path, for the file system in memory.
#pragma once

#include <string>
#include <string_view>

namespace fakes {

[[nodiscard]] bool endsWithSeparator(std::string_view path);

// The full path without doubled separators, "." and "..". Raises the error that opening such a name gives.
[[nodiscard]] std::string tidied(std::string_view path);

// One key for all spellings of a path.
[[nodiscard]] std::string keyOf(std::string_view path);

[[nodiscard]] std::string parentOf(const std::string& key);

} // namespace fakes
