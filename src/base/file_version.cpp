#include "base/file_version.h"

#include <charconv>
#include <cstddef>
#include <system_error>

namespace base {

std::optional<FileVersion> toFileVersion(std::string_view text) noexcept {
    constexpr std::string_view kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) {
        return std::nullopt;
    }
    const char* at = text.data() + first;
    const char* const end = text.data() + text.find_last_not_of(kBlanks) + 1;
    FileVersion version;
    for (std::size_t part = 0; part < version.parts.size(); ++part) {
        const auto number = std::from_chars(at, end, version.parts[part]);
        if (number.ec != std::errc()) {
            return std::nullopt;
        }
        if (number.ptr == end) {
            return version;
        }
        if (*number.ptr != '.') {
            return std::nullopt;
        }
        at = number.ptr + 1;
    }
    return std::nullopt;
}

} // namespace base
