#include "cabinet/dos_time.h"

#include <chrono>

namespace cabinet {

base::DateTime fromDosTime(std::uint16_t date, std::uint16_t time) noexcept {
    const unsigned bitsOfDate = date;
    const unsigned bitsOfTime = time;
    const std::chrono::year_month_day day{std::chrono::year{static_cast<int>(1980 + (bitsOfDate >> 9U))},
                                          std::chrono::month{bitsOfDate >> 5U & 0xFU},
                                          std::chrono::day{bitsOfDate & 0x1FU}};
    const unsigned hour = bitsOfTime >> 11U;
    const unsigned minute = bitsOfTime >> 5U & 0x3FU;
    const unsigned second = (bitsOfTime & 0x1FU) * 2;
    if (!day.ok() || hour > 23 || minute > 59 || second > 59) {
        return {};
    }
    return {static_cast<int>(day.year()),
            static_cast<int>(static_cast<unsigned>(day.month())),
            static_cast<int>(static_cast<unsigned>(day.day())),
            static_cast<int>(hour),
            static_cast<int>(minute),
            static_cast<int>(second)};
}

} // namespace cabinet
