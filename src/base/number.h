// Numbers that people and hosts write as text.
#pragma once

#include <optional>
#include <string_view>

namespace base {

// A decimal number with blanks around it: "30", " -1.5 ", "2e3". None for any other text, also for "infinity" and for a
// number too large. The same in every language: the fraction follows a full stop.
[[nodiscard]] std::optional<double> toNumber(std::string_view text) noexcept;

} // namespace base
