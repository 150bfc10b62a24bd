#include "peers/trusted_authority.h"

#include <array>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace peers {
namespace {

windows::UniqueCertificate certificateIn(const std::string& pemFile) {
    std::ifstream file(pemFile, std::ios::binary);
    const std::string pem{std::istreambuf_iterator<char>(file), {}};
    std::array<BYTE, 4096> bytes{};
    auto size = static_cast<DWORD>(bytes.size());
    if (!CryptStringToBinaryA(pem.c_str(), 0, CRYPT_STRING_BASE64HEADER, bytes.data(), &size, nullptr, nullptr)) {
        return {};
    }
    return windows::UniqueCertificate(CertCreateCertificateContext(X509_ASN_ENCODING, bytes.data(), size));
}

// Closing writes what was changed: a context of the store's own that is still held would put that off.
class RootStore {
public:
    RootStore() : m_store(CertOpenSystemStoreW(0, L"ROOT")) {}
    RootStore(const RootStore&) = delete;
    RootStore& operator=(const RootStore&) = delete;
    ~RootStore() { CertCloseStore(m_store, 0); }
    [[nodiscard]] HCERTSTORE get() const { return m_store; }

private:
    HCERTSTORE m_store;
};

} // namespace

TrustedAuthority::TrustedAuthority(const std::string& pemFile) : m_certificate(certificateIn(pemFile)) {
    const RootStore store;
    if (!m_certificate ||
        !CertAddCertificateContextToStore(store.get(), m_certificate.get(), CERT_STORE_ADD_REPLACE_EXISTING, nullptr)) {
        throw std::runtime_error("The test's authority cannot be added: " + pemFile);
    }
}

TrustedAuthority::~TrustedAuthority() {
    const RootStore store;
    CertDeleteCertificateFromStore(CertFindCertificateInStore(store.get(), X509_ASN_ENCODING, 0, CERT_FIND_EXISTING,
                                                              m_certificate.get(), nullptr));
}

} // namespace peers
