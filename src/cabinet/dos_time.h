// The two 16-bit words in which a cabinet keeps a file's date and time.
#pragma once

#include "base/date_time.h"

#include <cstdint>

namespace cabinet {

// Years 1980 to 2107, seconds in steps of two; no time zone is applied. What is no date or no time of day gives the
// default DateTime, which automation knows as date 0.
[[nodiscard]] base::DateTime fromDosTime(std::uint16_t date, std::uint16_t time) noexcept;

} // namespace cabinet
