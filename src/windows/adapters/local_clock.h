// The user's wall clock.
#pragma once

#include "ports/clock.h"

namespace windows {

class LocalClock final : public ports::Clock {
public:
    base::DateTime now() override;
};

} // namespace windows
