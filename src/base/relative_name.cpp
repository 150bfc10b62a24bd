#include "base/relative_name.h"

namespace base {

bool staysInside(std::string_view relativeName) noexcept {
    if (relativeName.find(':') != std::string_view::npos || relativeName.starts_with('\\') ||
        relativeName.starts_with('/')) {
        return false;
    }
    while (true) {
        const std::size_t end = relativeName.find_first_of("\\/");
        if (relativeName.substr(0, end) == "..") {
            return false;
        }
        if (end == std::string_view::npos) {
            return true;
        }
        relativeName.remove_prefix(end + 1);
    }
}

} // namespace base
