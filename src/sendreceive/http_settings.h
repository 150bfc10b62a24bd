// How the transport reaches the server: through which proxy or firewall, and as whom, by the user's settings.
#pragma once

#include "ports/settings.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace sendreceive {

// What goes between this machine and the server; the numbers are the transport's own.
enum class Firewall : std::int32_t { None = 0, Tunnel = 1, Socks4 = 2, Socks5 = 3 };

struct HttpSettings {
    std::string proxyServer; // empty: none
    std::int32_t proxyPort = 80;
    std::string proxyUser;
    std::string proxyPassword;

    Firewall firewallType = Firewall::None;
    std::string firewallHost;
    std::int32_t firewallPort = 80;
    std::string firewallUser;
    std::string firewallPassword;

    std::string user; // for the server itself
    std::string password;
};

// Whose settings, and for which of the two web addresses.
struct HttpTarget {
    std::string gSettingString;
    std::string gWebService;
    bool alternate = false; // the user ticked the alternate address
};

using Log = std::function<void(std::string_view line)>;

// Brings `http` in line with the user's settings and logs what is chosen. A port that is no whole number raises 13, one
// beyond 32 bits 6; what comes before the port is set then, user and password are not.
void setHttpSettings(HttpSettings& http, ports::Settings& settings, const HttpTarget& target, const Log& log);

} // namespace sendreceive
