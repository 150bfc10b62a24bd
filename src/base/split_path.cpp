#include "base/split_path.h"

namespace base {

SplitPath splitPath(std::string_view name) noexcept {
    const std::size_t length = name.find_last_of('\\') + 1; // 0 when there is none
    return {name.substr(0, length), name.substr(length)};
}

std::string_view nameWithoutFolder(std::string_view name) noexcept {
    const std::size_t separator = name.find_last_of("\\/");
    return separator == std::string_view::npos ? name : name.substr(separator + 1);
}

} // namespace base
