// Text at the border to Windows: UTF-8 inside the component, UTF-16 in every call to the system.
#pragma once

#include <string>
#include <string_view>

namespace windows {

// Lone surrogates survive the way in and out (base/text.h).
[[nodiscard]] std::wstring toWide(std::string_view utf8);
[[nodiscard]] std::string fromWide(std::wstring_view utf16);

} // namespace windows
