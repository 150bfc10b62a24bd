#include "fakes/fake_clock.h"

namespace fakes {

void FakeClock::advance(std::chrono::seconds step) {
    using namespace std::chrono;
    const sys_days day = year{m_time.year} / m_time.month / m_time.day;
    const sys_seconds moved = day + hours{m_time.hour} + minutes{m_time.minute} + seconds{m_time.second} + step;
    const sys_days newDay = floor<days>(moved);
    const year_month_day date{newDay};
    const hh_mm_ss time{moved - newDay};
    m_time = {static_cast<int>(date.year()),
              static_cast<int>(static_cast<unsigned>(date.month())),
              static_cast<int>(static_cast<unsigned>(date.day())),
              static_cast<int>(time.hours().count()),
              static_cast<int>(time.minutes().count()),
              static_cast<int>(time.seconds().count())};
}

} // namespace fakes
