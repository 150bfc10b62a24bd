#include "connection/http_settings.h"

#include "base/number.h"
#include "base/runtime_error.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace connection {
namespace {

using ports::Firewall;
using ports::HttpSettings;

// Which properties server, port, user and password of the settings go to; null: not set.
struct Destination {
    std::string HttpSettings::*server;
    std::int32_t HttpSettings::*port;
    std::string HttpSettings::*user;
    std::string HttpSettings::*password;
};

constexpr Destination kProxy{&HttpSettings::proxyServer, &HttpSettings::proxyPort, &HttpSettings::proxyUser,
                             &HttpSettings::proxyPassword};
constexpr Destination kFirewall{&HttpSettings::firewallHost, &HttpSettings::firewallPort, &HttpSettings::firewallUser,
                                &HttpSettings::firewallPassword};
constexpr Destination kServer{nullptr, nullptr, &HttpSettings::user, &HttpSettings::password};

// The log names the transport's number of the firewall, not the setting's: that is what support asks for.
struct Kind {
    std::string_view setting;
    std::string_view logLine;
    Firewall type;
    Destination destination;
};

constexpr std::array kKinds{
    Kind{"0", "Type 0", Firewall::None, kProxy},      Kind{"1", "Type 2", Firewall::Socks4, kFirewall},
    Kind{"2", "Type 3", Firewall::Socks5, kFirewall}, Kind{"3", "Type 0", Firewall::None, kServer},
    Kind{"4", "Type 1", Firewall::Tunnel, kFirewall},
};

// The proxy's own user and password stay what they were: without a proxy nobody is told them.
void reset(HttpSettings& http) {
    HttpSettings fresh;
    fresh.proxyUser = http.proxyUser;
    fresh.proxyPassword = http.proxyPassword;
    http = fresh;
}

std::int32_t toPort(const std::string& text) {
    const std::optional<double> number = base::toNumber(text);
    if (!number || *number != std::floor(*number)) {
        throw base::RuntimeError(base::error::kTypeMismatch);
    }
    using Limits = std::numeric_limits<std::int32_t>;
    if (*number < Limits::min() || *number > Limits::max()) {
        throw base::RuntimeError(base::error::kOverflow);
    }
    return static_cast<std::int32_t>(*number);
}

// Each property is set as soon as it is known, so that an error leaves those before it.
void apply(HttpSettings& http, const Kind& kind, const std::function<std::string(std::string_view)>& setting,
           const Log& log) {
    log(kind.logLine);
    http.firewallType = kind.type;
    const Destination& to = kind.destination;
    if (to.server != nullptr) {
        http.*to.server = setting("ProxyServer");
    }
    if (const std::string port = setting("ProxyPort"); to.port != nullptr && !port.empty()) {
        http.*to.port = toPort(port);
    }
    if (const std::string user = setting("ProxyUser"); !user.empty()) {
        http.*to.user = user;
    }
    if (const std::string password = setting("ProxyPassword"); !password.empty()) {
        http.*to.password = password;
    }
}

} // namespace

void setHttpSettings(HttpSettings& http, ports::Settings& settings, const HttpTarget& target, const Log& log) {
    const auto dialup = [&](std::string_view key) { return settings.get(target.gSettingString, "Dialup", key); };
    log("Sub HTTP Settings --> Start");
    reset(http);
    if (!target.gWebService.empty() && target.alternate &&
        settings.get(target.gSettingString, target.gWebService, "AltURLUseProxy") != "1") {
        return; // the alternate address is reached directly; the log has no end then, as after an error
    }
    if (dialup("UseProxy") == "1") {
        const std::string setting = dialup("FirewallType");
        const auto* const kind = std::find_if(kKinds.begin(), kKinds.end(),
                                              [&](const Kind& candidate) { return candidate.setting == setting; });
        if (kind != kKinds.end()) {
            apply(http, *kind, dialup, log);
        }
    }
    log("Sub SetHTTPSettings --> end");
}

} // namespace connection
