// Whether a server's certificate is good, by the system's authorities and rules.
#pragma once

#include "windows/adapters/handles.h"

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

// Why `certificate` is not good for a server called `host`, in one line; "" when it is. The store that it came in may
// hold the certificates between it and its authority. Does not ask the network for revocations.
[[nodiscard]] std::string serverCertificateFault(PCCERT_CONTEXT certificate, const std::string& host);

} // namespace windows
