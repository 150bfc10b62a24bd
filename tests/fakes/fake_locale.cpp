#include "fakes/fake_locale.h"

#include "base/text.h"

#include <array>
#include <cstdio>

namespace fakes {

std::string FakeLocale::shortMonthName(int month) {
    constexpr std::array<const char*, 12> kNames{"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                 "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};
    return kNames.at(static_cast<std::size_t>(month - 1));
}

std::string FakeLocale::generalDate(const base::DateTime& time) {
    char date[48];
    char clock[48];
    std::snprintf(date, sizeof date, "%d/%d/%04d", time.month, time.day, time.year);
    std::snprintf(clock, sizeof clock, "%d:%02d:%02d %s", (time.hour + 11) % 12 + 1, time.minute, time.second,
                  time.hour < 12 ? "AM" : "PM");
    const base::DateTime zero;
    if (time.year == zero.year && time.month == zero.month && time.day == zero.day) {
        return clock;
    }
    const bool midnight = time.hour == 0 && time.minute == 0 && time.second == 0;
    return midnight ? date : std::string(date) + " " + clock;
}

bool FakeLocale::equalIgnoringCase(std::string_view left, std::string_view right) {
    return base::upperCase(left) == base::upperCase(right);
}

} // namespace fakes
