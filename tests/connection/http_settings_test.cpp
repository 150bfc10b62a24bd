#include "connection/http_settings.h"

#include "base/error_number.h"
#include "base/runtime_error.h"
#include "fakes/fake_settings.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace connection {
namespace {

class HttpSettingsTest : public testing::Test {
protected:
    HttpSettingsTest() {
        set("UseProxy", "1");
        set("ProxyServer", "proxy.example");
        set("ProxyPort", "8080");
        set("ProxyUser", "user");
        set("ProxyPassword", "secret");
    }
    void set(std::string_view key, std::string_view value) { settings.set("Shop", "Dialup", key, value); }
    // What the transport is told, and the log.
    std::string configure() {
        std::string log;
        setHttpSettings(http, settings, target, [&](std::string_view line) { log.append(line).append("|"); });
        return log;
    }
    [[nodiscard]] std::string proxy() const {
        return http.proxyServer + ":" + std::to_string(http.proxyPort) + " " + http.proxyUser + "/" +
               http.proxyPassword;
    }
    [[nodiscard]] std::string firewall() const {
        return std::to_string(static_cast<int>(http.firewallType)) + " " + http.firewallHost + ":" +
               std::to_string(http.firewallPort) + " " + http.firewallUser + "/" + http.firewallPassword;
    }
    [[nodiscard]] std::string server() const { return http.user + "/" + http.password; }

    fakes::FakeSettings settings;
    HttpTarget target{"Shop", "http://supplier/ws", false};
    ports::HttpSettings http;
    static constexpr std::string_view kFull = "proxy.example:8080 user/secret";
};

TEST_F(HttpSettingsTest, EveryKindSetsItsOwnPropertiesAndLogsTheTransportsNumber) {
    const std::string full(kFull);
    const struct {
        const char* setting;
        std::string log, proxy, firewall, server;
    } kRows[] = {
        {"0", "Type 0|", full, "0 :80 /", "/"},      {"1", "Type 2|", ":80 /", "2 " + full, "/"},
        {"2", "Type 3|", ":80 /", "3 " + full, "/"}, {"3", "Type 0|", ":80 /", "0 :80 /", "user/secret"},
        {"4", "Type 1|", ":80 /", "1 " + full, "/"}, {"5", "", ":80 /", "0 :80 /", "/"},
        {"", "", ":80 /", "0 :80 /", "/"},           {"00", "", ":80 /", "0 :80 /", "/"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.setting);
        http = {};
        set("FirewallType", row.setting);
        EXPECT_EQ(configure(), "Sub HTTP Settings --> Start|" + row.log + "Sub SetHTTPSettings --> end|");
        EXPECT_EQ(proxy(), row.proxy);
        EXPECT_EQ(firewall(), row.firewall);
        EXPECT_EQ(server(), row.server);
    }
}

TEST_F(HttpSettingsTest, AChangeOfSettingsLeavesNothingOfTheOldRouteBehind) {
    for (const char* const kind : {"0", "1", "3"}) {
        set("FirewallType", kind);
        configure();
    }
    set("UseProxy", "0");
    EXPECT_EQ(configure(), "Sub HTTP Settings --> Start|Sub SetHTTPSettings --> end|");
    EXPECT_EQ(proxy(), ":80 user/secret") << "who is asked for by no proxy";
    EXPECT_EQ(firewall(), "0 :80 /");
    EXPECT_EQ(server(), "/");
}

TEST_F(HttpSettingsTest, TheAlternateAddressUsesTheProxyOnlyWhenToldSo) {
    set("FirewallType", "0");
    target.alternate = true;
    EXPECT_EQ(configure(), "Sub HTTP Settings --> Start|");
    EXPECT_EQ(http.proxyServer, "");
    settings.set("Shop", "http://supplier/ws", "AltURLUseProxy", "1");
    configure();
    EXPECT_EQ(proxy(), kFull);
    settings.set("Shop", "http://supplier/ws", "AltURLUseProxy", "0");
    target.gWebService.clear(); // then there is no alternate address
    configure();
    EXPECT_EQ(proxy(), kFull);
}

TEST_F(HttpSettingsTest, APortThatIsNoneEndsItWithTheServerSetAndNobodyNamed) {
    const struct {
        const char* port;
        std::int32_t error, result;
    } kRows[] = {{"", 0, 80},      {" 3128 ", 0, 3128}, {"x", 13, 80},         {"80a", 13, 80},
                 {"80.5", 13, 80}, {"8 080", 13, 80},   {"2147483648", 6, 80}, {"2147483647", 0, 2147483647}};
    set("FirewallType", "0");
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.port);
        http = {};
        set("ProxyPort", row.port);
        const std::int32_t error = base::errorNumber([&] { configure(); });
        EXPECT_EQ(error, row.error);
        EXPECT_EQ(http.proxyServer, "proxy.example");
        EXPECT_EQ(http.proxyPort, row.result);
        EXPECT_EQ(http.proxyUser, error == 0 ? "user" : "");
    }
}

} // namespace
} // namespace connection
