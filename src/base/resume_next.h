// Error-ignoring routines: each statement stands alone, a failing one has no effect and the next one runs.
#pragma once

#include "base/runtime_error.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace base {

// Runs one statement of an error-ignoring routine. Without a result: true when it ran through. With a result: empty
// when it failed, so that a failed assignment can leave its target as it was.
// Out of memory is never ignored, nor is anything that is not a RuntimeError: those reach the caller.
template <typename Step>
auto resumeNext(Step&& step) {
    using Result = std::invoke_result_t<Step>;
    try {
        if constexpr (std::is_void_v<Result>) {
            std::forward<Step>(step)();
            return true;
        } else {
            return std::optional<Result>(std::forward<Step>(step)());
        }
    } catch (const RuntimeError& e) {
        if (e.number() == error::kOutOfMemory) {
            throw;
        }
        if constexpr (std::is_void_v<Result>) {
            return false;
        } else {
            return std::optional<Result>();
        }
    }
}

} // namespace base
