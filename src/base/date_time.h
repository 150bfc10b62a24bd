// Local wall-clock time as plain numbers, and the fixed formats that file names and stored dates use.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace base {

struct DateTime {
    int year = 1899;
    int month = 12; // 1..12
    int day = 30;   // 1..31
    int hour = 0;   // 0..23
    int minute = 0;
    int second = 0;
};

// "yyyyMMdd_hhmmss" with a 24-hour clock, zero-padded: 20261115_190812. Used in names of kept files, so it sorts by
// time.
[[nodiscard]] std::string fileTimestamp(const DateTime& time);

// "yyyyMMdd", zero-padded: 20261115.
[[nodiscard]] std::string dateStamp(const DateTime& time);

// The calendar day, to count with.
[[nodiscard]] std::chrono::sys_days dayOf(const DateTime& time) noexcept;
// The day that a dateStamp() names; none for any other text and for a day that no calendar has.
[[nodiscard]] std::optional<std::chrono::sys_days> dayOf(std::string_view dateStamp) noexcept;

} // namespace base
