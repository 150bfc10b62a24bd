// The number of the run-time error that a step raises.
#pragma once

#include "base/runtime_error.h"

#include <cstdint>
#include <utility>

namespace base {

// 0 when the step raises nothing.
template <typename Step>
std::int32_t errorNumber(Step&& step) {
    try {
        std::forward<Step>(step)();
        return 0;
    } catch (const RuntimeError& e) {
        return e.number();
    }
}

} // namespace base
