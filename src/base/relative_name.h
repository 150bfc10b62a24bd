// Names that came from elsewhere and are about to be joined to a folder.
#pragma once

#include <string_view>

namespace base {

// False for a name that could lead outside the folder: a ".." between either separator, a colon, a leading separator.
[[nodiscard]] bool staysInside(std::string_view relativeName) noexcept;

// True for a name without folders that Windows takes for a device: "NUL", "com1.txt", a port with a superscript digit.
[[nodiscard]] bool isDeviceName(std::string_view name) noexcept;

// True for a name that stays inside and that Windows lets be a file: nothing empty, no part of dots and blanks alone
// (Windows drops those at the end of a name, so "... " may become ".."), no device ("NUL", "com1.txt"), no control
// character and none of <>"|?*. Either separator counts.
[[nodiscard]] bool namesAFileInside(std::string_view relativeName) noexcept;

} // namespace base
