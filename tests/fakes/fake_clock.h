// A wall clock that tests set and advance.
#pragma once

#include "ports/clock.h"

#include <chrono>

namespace fakes {

class FakeClock final : public ports::Clock {
public:
    FakeClock() : FakeClock({2026, 11, 15, 19, 8, 12}) {}
    explicit FakeClock(const base::DateTime& time) : m_time(time) {}

    base::DateTime now() override { return m_time; }

    void set(const base::DateTime& time) { m_time = time; }

    // Moves the clock by whole seconds, over the ends of days, months and years.
    void advance(std::chrono::seconds step);

private:
    base::DateTime m_time;
};

} // namespace fakes
