// Waiting for something to become true in another process: polled, with a deadline, given up early when the host ended.
#pragma once

#include <functional>
#include <optional>
#include <string_view>

namespace drive {

class HostProcess;

class Patience {
public:
    explicit Patience(const HostProcess& host) : m_host(host) {}

    // How long until() waits when it is not told otherwise.
    void setSeconds(double seconds) { m_seconds = seconds; }

    // Returns as soon as the condition holds. Throws Failure naming `what` when the time is over, or at once when the
    // host has ended without it.
    void until(std::string_view what, const std::function<bool()>& condition, std::optional<double> seconds = {}) const;

private:
    const HostProcess& m_host;
    double m_seconds = 10;
};

} // namespace drive
