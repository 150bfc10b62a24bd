// The one way to catch a run-time error.
#pragma once

#include "base/runtime_error.h"

#include <optional>
#include <utility>

namespace base {

// Runs `step`; empty when it ran through, else the error that ended it. Out of memory is never caught, nor is anything
// that is not a RuntimeError: those reach the caller.
template <typename Step>
[[nodiscard]] std::optional<RuntimeError> attempt(Step&& step) {
    try {
        std::forward<Step>(step)();
        return std::nullopt;
    } catch (const RuntimeError& e) {
        if (e.number() == error::kOutOfMemory) {
            throw;
        }
        return e;
    }
}

// For the way out, where nothing may be raised any more: what goes wrong is past mending.
template <typename Step>
void quietly(Step&& step) noexcept {
    try {
        std::forward<Step>(step)();
    } catch (...) {
    }
}

} // namespace base
