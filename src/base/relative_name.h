// Names that came from elsewhere and are about to be joined to a folder.
#pragma once

#include <string_view>

namespace base {

// False for a name that could lead outside the folder: a ".." between either separator, a colon, a leading separator.
[[nodiscard]] bool staysInside(std::string_view relativeName) noexcept;

} // namespace base
