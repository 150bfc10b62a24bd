// Error-ignoring routines: each statement stands alone, a failing one has no effect and the next one runs.
#pragma once

#include "base/attempt.h"

#include <optional>
#include <type_traits>
#include <utility>

namespace base {

// Runs one statement of an error-ignoring routine. Without a result: true when it ran through. With a result: empty
// when it failed, so that a failed assignment can leave its target as it was. Catches what attempt() does.
template <typename Step>
auto resumeNext(Step&& step) {
    using Result = std::invoke_result_t<Step>;
    if constexpr (std::is_void_v<Result>) {
        return !attempt(std::forward<Step>(step));
    } else {
        std::optional<Result> result;
        static_cast<void>(attempt([&] { result.emplace(std::forward<Step>(step)()); }));
        return result;
    }
}

} // namespace base
