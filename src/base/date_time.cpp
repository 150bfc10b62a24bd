#include "base/date_time.h"

#include <charconv>
#include <cstdio>

namespace base {

std::string fileTimestamp(const DateTime& time) {
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%04d%02d%02d_%02d%02d%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    return buffer;
}

std::string dateStamp(const DateTime& time) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%04d%02d%02d", time.year, time.month, time.day);
    return buffer;
}

std::chrono::sys_days dayOf(const DateTime& time) noexcept {
    return std::chrono::year{time.year} / time.month / time.day;
}

std::optional<std::chrono::sys_days> dayOf(std::string_view dateStamp) noexcept {
    if (dateStamp.size() != 8 || dateStamp.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    int number = 0;
    std::from_chars(dateStamp.data(), dateStamp.data() + dateStamp.size(), number);
    const std::chrono::year_month_day date = std::chrono::year{number / 10000} / (number / 100 % 100) / (number % 100);
    return date.ok() ? std::optional<std::chrono::sys_days>(date) : std::nullopt;
}

} // namespace base
