// The one place where the driver's UTF-8 meets the platform's UTF-16.
#pragma once

#include "base/text.h"

#include <string>
#include <string_view>

namespace drive {

[[nodiscard]] inline std::wstring wide(std::string_view utf8) {
    const std::u16string units = base::toUtf16(utf8);
    return {units.begin(), units.end()};
}

[[nodiscard]] inline std::string narrow(std::wstring_view utf16) {
    return base::toUtf8(std::u16string(utf16.begin(), utf16.end()));
}

} // namespace drive
