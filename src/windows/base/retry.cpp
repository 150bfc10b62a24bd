#include "windows/base/retry.h"

#include <windows.h>

namespace windows {

std::uint32_t retryWhileShared(const Pause& pause, const std::function<std::uint32_t()>& attempt) {
    for (const unsigned delay : {5U, 15U, 30U, 50U, 100U, 150U, 150U}) { // half a second together
        const std::uint32_t result = attempt();
        if (result != ERROR_SHARING_VIOLATION && result != ERROR_LOCK_VIOLATION) {
            return result;
        }
        pause(delay);
    }
    return attempt();
}

} // namespace windows
