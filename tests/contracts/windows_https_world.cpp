#include "contracts/https_world.h"

#include "windows/adapters/certificate_check.h"
#include "windows/adapters/windows_network.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <iterator>

#include <windows.h>

namespace contracts {
namespace {

// The peers' authority among the user's trusted ones, while the tests run.
class TrustedAuthority final : public testing::Environment {
public:
    void SetUp() override {
        std::ifstream file(peerValue("CA"), std::ios::binary);
        const std::string pem{std::istreambuf_iterator<char>(file), {}};
        std::array<BYTE, 4096> bytes{};
        auto size = static_cast<DWORD>(bytes.size());
        if (pem.empty()) {
            return; // no peers: the tests say so
        }
        ASSERT_TRUE(
            CryptStringToBinaryA(pem.c_str(), 0, CRYPT_STRING_BASE64HEADER, bytes.data(), &size, nullptr, nullptr));
        m_certificate.reset(CertCreateCertificateContext(X509_ASN_ENCODING, bytes.data(), size));
        ASSERT_TRUE(m_certificate);
        // Closing writes it: a context that is still held would put that off.
        const HCERTSTORE store = CertOpenSystemStoreW(0, L"ROOT");
        EXPECT_TRUE(
            CertAddCertificateContextToStore(store, m_certificate.get(), CERT_STORE_ADD_REPLACE_EXISTING, nullptr));
        CertCloseStore(store, 0);
    }
    void TearDown() override {
        if (m_certificate) {
            const HCERTSTORE store = CertOpenSystemStoreW(0, L"ROOT");
            CertDeleteCertificateFromStore(CertFindCertificateInStore(store, X509_ASN_ENCODING, 0, CERT_FIND_EXISTING,
                                                                      m_certificate.get(), nullptr));
            CertCloseStore(store, 0);
        }
    }

private:
    windows::UniqueCertificate m_certificate;
};

const auto* const kAuthority = testing::AddGlobalTestEnvironment(new TrustedAuthority);

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
