// How the transport reaches the server: through which proxy or firewall, and as whom, by the user's settings.
#pragma once

#include "ports/https.h"
#include "ports/settings.h"

#include <functional>
#include <string>
#include <string_view>

namespace connection {

// Whose settings, and for which of the two web addresses.
struct HttpTarget {
    std::string gSettingString;
    std::string gWebService;
    bool alternate = false; // the user ticked the alternate address
};

using Log = std::function<void(std::string_view line)>;

// Brings `http` in line with the user's settings and logs what is chosen. A port that is no whole number raises 13, one
// beyond 32 bits 6; what comes before the port is set then, user and password are not.
void setHttpSettings(ports::HttpSettings& http, ports::Settings& settings, const HttpTarget& target, const Log& log);

} // namespace connection
