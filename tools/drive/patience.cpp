// The polling loop. Another process cannot hand us an event for "the list now holds a.jpg", so we look again and again.
#include "drive/patience.h"

#include "drive/failure.h"
#include "drive/host_process.h"

#include <chrono>
#include <string>
#include <thread>

namespace drive {

void Patience::until(std::string_view what, const std::function<bool()>& condition,
                     std::optional<double> seconds) const {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kInterval{5};
    const double limit = seconds.value_or(m_seconds);
    const auto deadline =
        Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(limit));
    for (;;) {
        // Asked before the condition: what became true just before the end still counts.
        const bool ended = m_host.started() && m_host.exitCode().has_value();
        if (condition()) {
            return;
        }
        if (ended) {
            throw Failure("the host ended with code " + std::to_string(m_host.exitCode().value_or(0)) +
                          " while waiting for " + std::string(what));
        }
        if (Clock::now() >= deadline) {
            throw Failure("waited " + std::to_string(static_cast<int>(limit)) + " s in vain for " + std::string(what));
        }
        std::this_thread::sleep_for(kInterval);
    }
}

} // namespace drive
