// Every way to a server that the settings offer, through real proxies.
#include "contracts/https_contract.h"

#include <gmock/gmock.h>

namespace contracts {
namespace {

using ports::Firewall;
using ports::HttpSettings;
using testing::HasSubstr;
using testing::Not;

HttpSettings proxy(const std::string& host, std::int32_t port, const std::string& password = "") {
    HttpSettings settings;
    settings.proxyServer = host;
    settings.proxyPort = port;
    settings.proxyUser = password.empty() ? "" : "me";
    settings.proxyPassword = password;
    return settings;
}

HttpSettings firewall(Firewall kind, const std::string& host, std::int32_t port, const std::string& password = "") {
    HttpSettings settings;
    settings.firewallType = kind;
    settings.firewallHost = host;
    settings.firewallPort = port;
    settings.firewallUser = password.empty() ? "" : "me";
    settings.firewallPassword = password;
    return settings;
}

const std::string kLoopback = "127.0.0.1";

struct Way {
    std::string name;
    HttpSettings settings;
    std::string peer;
    Kind kind;
    std::int32_t status;
    int started = 1;
};

class HttpsProxies : public HttpsContract {
protected:
    void expectAll(const std::vector<Way>& rows) {
        for (const Way& row : rows) {
            // A proxy that refuses a login does not read the body, and may so reset the connection.
            const std::string url = at(row.peer, "/echo");
            ports::HttpRequest request = row.status == 200 ? post(url, "<body/>") : get(url);
            request.settings = row.settings;
            const ports::HttpOutcome end = perform(request);
            SCOPED_TRACE(row.name + ": " + std::to_string(end.code) + " " + end.description);
            EXPECT_EQ(end.kind, row.kind);
            EXPECT_EQ(end.status, row.status);
            EXPECT_EQ(heard->started, row.started);
            EXPECT_FALSE(end.broken);
            EXPECT_EQ(end.description.empty(), row.kind == Kind::Answered);
            if (row.status == 200) {
                EXPECT_THAT(heard->body, HasSubstr("<body/>"));
            }
        }
    }
};

TEST_P(HttpsProxies, AnHttpProxy) {
    const std::int32_t plain = peerPort("PROXY");
    const std::int32_t login = peerPort("PROXY_LOGIN");
    expectAll({
        {"plain", proxy(kLoopback, plain), "HTTP", Kind::Answered, 200},
        {"to a secret server", proxy(kLoopback, plain), "GOOD", Kind::Answered, 200},
        {"with login", proxy(kLoopback, login, "se_cret"), "HTTP", Kind::Answered, 200},
        {"with login, to a secret server", proxy(kLoopback, login, "se_cret"), "GOOD", Kind::Answered, 200},
        {"wrong password", proxy(kLoopback, login, "wrong"), "HTTP", Kind::Answered, 401},
        {"without a login", proxy(kLoopback, login), "HTTP", Kind::Answered, 407},
        {"to a server that lies", proxy(kLoopback, plain), "SELF_SIGNED", Kind::Failed, 0, 0},
        {"refused", proxy(kLoopback, peerPort("REFUSED")), "HTTP", Kind::ConnectFailed, 0, 0},
        {"no such proxy", proxy("no-such-host.invalid", plain), "HTTP", Kind::Failed, 0, 0},
        {"no port", proxy(kLoopback, 0), "HTTP", Kind::Failed, 0, 0},
        {"negative port", proxy(kLoopback, -1), "HTTP", Kind::Failed, 0, 0},
        {"port too high", proxy(kLoopback, 65'536), "HTTP", Kind::Failed, 0, 0},
        {"no host", proxy("", 0), "HTTP", Kind::Answered, 200},
    });
    if (!GetParam().seesTheWire) {
        return; // the library shares connections among requests, in Wine also those that went another way
    }
    expectAll({
        {"wrong password, to a secret server", proxy(kLoopback, login, "wrong"), "GOOD", Kind::Answered, 401, 0},
    });
    ports::HttpRequest request = get(at("HTTP", "/echo"));
    request.settings = proxy(kLoopback, login, "se_cret");
    request.settings.user = "you";
    request.settings.password = "server's";
    static_cast<void>(perform(request));
    EXPECT_THAT(heard->body, HasSubstr("Via: ")); // it did go through
    EXPECT_THAT(heard->body, HasSubstr("Authorization: Basic eW91OnNlcnZlcidz"));
    EXPECT_THAT(heard->body, Not(HasSubstr("Proxy-Authorization:")));
}

TEST_P(HttpsProxies, SocksAndTunnels) {
    if (!GetParam().socksAndTunnels) {
        GTEST_SKIP() << GetParam().name << " has neither SOCKS nor tunnels for plain addresses";
    }
    const std::int32_t plain = peerPort("PROXY");
    const std::int32_t login = peerPort("PROXY_LOGIN");
    const std::int32_t socks4 = peerPort("SOCKS4");
    const std::int32_t socks5 = peerPort("SOCKS5_LOGIN");
    const Firewall tunnel = Firewall::Tunnel;
    expectAll({
        {"tunnel", firewall(tunnel, kLoopback, plain), "HTTP", Kind::Answered, 200},
        {"tunnel to a secret server", firewall(tunnel, kLoopback, plain), "GOOD", Kind::Answered, 200},
        {"tunnel with login", firewall(tunnel, kLoopback, login, "se_cret"), "HTTP", Kind::Answered, 200},
        {"tunnel, wrong password", firewall(tunnel, kLoopback, login, "wrong"), "HTTP", Kind::Answered, 401, 0},
        {"SOCKS4", firewall(Firewall::Socks4, kLoopback, socks4), "HTTP", Kind::Answered, 200},
        {"SOCKS4 to a secret server", firewall(Firewall::Socks4, kLoopback, socks4), "GOOD", Kind::Answered, 200},
        {"SOCKS5", firewall(Firewall::Socks5, kLoopback, socks5, "se:cret"), "HTTP", Kind::Answered, 200},
        {"SOCKS5 to a secret server", firewall(Firewall::Socks5, kLoopback, socks5, "se:cret"), "GOOD", Kind::Answered,
         200},
        {"SOCKS5, wrong password", firewall(Firewall::Socks5, kLoopback, socks5, "wrong"), "HTTP", Kind::Failed, 0, 0},
        {"no SOCKS there", firewall(Firewall::Socks5, kLoopback, peerPort("HTTP")), "HTTP", Kind::Failed, 0, 0},
        {"to a server that lies", firewall(Firewall::Socks4, kLoopback, socks4), "EXPIRED", Kind::Failed, 0, 0},
        {"refused", firewall(Firewall::Socks5, kLoopback, peerPort("REFUSED")), "HTTP", Kind::ConnectFailed, 0, 0},
        {"port too high", firewall(Firewall::Socks4, kLoopback, 70'000), "HTTP", Kind::Failed, 0, 0},
        {"no host", firewall(Firewall::Socks5, "", 80), "HTTP", Kind::Answered, 200},
    });
}

TEST_P(HttpsProxies, ARefusedTunnelIsToldInTheProxysWords) {
    if (!GetParam().socksAndTunnels) {
        GTEST_SKIP() << GetParam().name << " keeps a proxy's words to itself";
    }
    ports::HttpRequest request = get(at("HTTP", "/ok"));
    request.settings = firewall(Firewall::Tunnel, kLoopback, peerPort("HTTP"));
    const ports::HttpOutcome end = perform(request);
    EXPECT_EQ(end.kind, Kind::Answered);
    EXPECT_EQ(end.status, 418);
    EXPECT_EQ(end.reason, "No Tunnels Here");
    EXPECT_THAT(heard->headers, testing::IsEmpty());
    EXPECT_EQ(heard->body, "");
}

INSTANTIATE_TEST_SUITE_P(Real, HttpsProxies, testing::ValuesIn(httpsWorlds()),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace contracts
