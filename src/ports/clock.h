// The port to the wall clock, so that tests choose the time.
#pragma once

#include "base/date_time.h"

namespace ports {

class Clock {
public:
    Clock() = default;
    Clock(const Clock&) = delete;
    Clock& operator=(const Clock&) = delete;
    virtual ~Clock() = default;

    // The user's local time.
    [[nodiscard]] virtual base::DateTime now() = 0;
};

} // namespace ports
