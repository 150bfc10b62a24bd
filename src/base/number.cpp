#include "base/number.h"

#include "base/text.h"

#include <charconv>
#include <system_error>

namespace base {

std::optional<double> toNumber(std::string_view text) noexcept {
    text = trim(text);
    if (text.starts_with('+') && text.find('-') != 1) {
        text.remove_prefix(1);
    }
    if (text.find_first_not_of("0123456789.eE+-") != std::string_view::npos) {
        return std::nullopt; // hexadecimal numbers, "inf" and "nan" among them
    }
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number) : std::nullopt;
}

} // namespace base
