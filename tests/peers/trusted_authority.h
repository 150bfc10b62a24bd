// A test's authority among those that the user of this Wine prefix trusts.
#pragma once

#include "windows/network/certificate_chain.h"

#include <string>

namespace peers {

// Trusted while it lives, by every program of this user that looks then. Raises std::runtime_error when `pemFile` is
// no certificate or cannot be added.
class TrustedAuthority {
public:
    explicit TrustedAuthority(const std::string& pemFile);
    TrustedAuthority(const TrustedAuthority&) = delete;
    TrustedAuthority& operator=(const TrustedAuthority&) = delete;
    ~TrustedAuthority();

private:
    windows::UniqueCertificate m_certificate;
};

} // namespace peers
