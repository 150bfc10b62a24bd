// Waiting out another program that holds a file for a moment, such as a virus scanner or a second session's save.
#pragma once

#include <cstdint>
#include <functional>

namespace windows {

// Lets the given number of milliseconds pass; tests put their own in its place.
using Pause = std::function<void(unsigned milliseconds)>;

// Repeats `attempt` (result: 0 or a Win32 error code) while it meets a sharing violation, for half a second at most.
// Returns the last result.
[[nodiscard]] std::uint32_t retryWhileShared(const Pause& pause, const std::function<std::uint32_t()>& attempt);

} // namespace windows
