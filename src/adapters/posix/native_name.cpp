#include "adapters/posix/native_name.h"

#include "base/runtime_error.h"

#include <algorithm>

namespace adapters {

std::string nativeName(const std::filesystem::path& root, std::string_view path) {
    if (path.empty() || path.starts_with("\\\\")) {
        throw base::RuntimeError(base::error::kPathNotFound); // no name, or a network path
    }
    if (path.size() >= 2 && path[1] == ':') {
        path.remove_prefix(2);
    }
    if (path.find_first_of(std::string_view(":\0", 2)) != path.npos) {
        throw base::RuntimeError(base::error::kBadFileName);
    }
    std::string name = root.string() + "/" + std::string(path);
    std::replace(name.begin(), name.end(), '\\', '/');
    return name;
}

} // namespace adapters
