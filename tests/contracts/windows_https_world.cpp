#include "contracts/https_world.h"

#include "peers/trusted_authority.h"
#include "windows/adapters/windows_network.h"

#include <gtest/gtest.h>

#include <optional>

#include <windows.h>

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
        // Wine's WinInet, unlike Windows', takes these for the user's Internet options.
        for (const wchar_t* variable : {L"http_proxy", L"https_proxy", L"all_proxy"}) {
            SetEnvironmentVariableW(variable, nullptr);
        }
        return windows::WindowsNetwork().createHttps();
    };
    return {curl, winInet};
}

} // namespace contracts
