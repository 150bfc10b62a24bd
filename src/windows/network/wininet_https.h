// The web through WinInet, the platform's own library: with the Internet options of the user's system (proxy,
// automatic configuration, its logins), or with the one HTTP proxy that the settings name.
#pragma once

#include "ports/https.h"

namespace windows {

// Serves requests without a firewall; the settings' firewall fields are not looked at. Codes are WinInet's numbers
// (12007 name not resolved, 12029 cannot connect, 12002 timed out, ...).
class WinInetHttps final : public ports::Https {
public:
    [[nodiscard]] ports::HttpOutcome perform(const ports::HttpRequest& request, ports::HttpEvents& events) override;
    void cancel() noexcept override;

private:
    bool m_running = false;
    bool m_cancelled = false;
};

} // namespace windows
