// Local wall-clock time as plain numbers, and the two fixed formats that file names use.
#pragma once

#include <string>

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

} // namespace base
