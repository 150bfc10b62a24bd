// The machine's wall clock in local time.
#pragma once

#include "ports/clock.h"

namespace adapters {

class SystemClock final : public ports::Clock {
public:
    base::DateTime now() override;
};

} // namespace adapters
