// Chains of certificates, each from one certificate to an authority of this user.
#pragma once

#include "windows/base/handles.h"

#include <string>

#include <wincrypt.h>

namespace windows {

namespace closing {
inline void certificate(PCCERT_CONTEXT c) noexcept {
    CertFreeCertificateContext(c);
}
inline void certificateChain(PCCERT_CHAIN_CONTEXT c) noexcept {
    CertFreeCertificateChain(c);
}
} // namespace closing

using UniqueCertificate = UniqueResource<PCCERT_CONTEXT, closing::certificate>;
using UniqueCertificateChain = UniqueResource<PCCERT_CHAIN_CONTEXT, closing::certificateChain>;

struct ChainRules {
    std::string usage;                // what the certificate is taken for: one of the szOID_PKIX_KP_... identifiers
    const FILETIME* moment = nullptr; // when it must be valid; null: now
    DWORD flags = 0;                  // CERT_CHAIN_...
};

// Null when it could not even be tried. The store that the certificate came in may hold those between it and its
// authority. Does not ask the network for revocations.
[[nodiscard]] UniqueCertificateChain chainOf(PCCERT_CONTEXT certificate, ChainRules rules);

enum class ChainFault { kNone, kNotValidThen, kUnknownAuthority, kOther };

[[nodiscard]] ChainFault faultOf(PCCERT_CHAIN_CONTEXT chain) noexcept;

// "error 800B0109": for what no sentence of ours says.
[[nodiscard]] std::string numbered(DWORD error);

} // namespace windows
