#include "contracts/https_world.h"

#include "peers/internet_options.h"
#include "peers/trusted_authority.h"
#include "windows/network/windows_network.h"

#include <gtest/gtest.h>

#include <optional>

namespace contracts {
namespace {

class PeersAuthority final : public testing::Environment {
public:
    void SetUp() override {
        if (const std::string file = peerValue("CA"); !file.empty()) { // without peers the tests say so
            m_authority.emplace(file);
        }
    }
    void TearDown() override { m_authority.reset(); }

private:
    std::optional<peers::TrustedAuthority> m_authority;
};

const auto* const kAuthority = testing::AddGlobalTestEnvironment(new PeersAuthority);

} // namespace

std::vector<HttpsWorld> httpsWorlds() {
    HttpsWorld curl;
    curl.name = "Curl";
    curl.create = [] { return windows::WindowsNetwork().createHttps(); };
    HttpsWorld winInet = curl;
    winInet.name = "WinInet";
    winInet.useWinInet = true;
    winInet.socksAndTunnels = false;
    winInet.seesTheWire = false;
    winInet.create = [] {
        peers::forgetProxyVariables();
        return windows::WindowsNetwork().createHttps();
    };
    return {curl, winInet};
}

} // namespace contracts
