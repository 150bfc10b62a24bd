#include "windows/network/certificate_chain.h"

#include <array>
#include <cstdio>

namespace windows {

UniqueCertificateChain chainOf(PCCERT_CONTEXT certificate, ChainRules rules) {
    LPSTR usage = rules.usage.data();
    CERT_CHAIN_PARA parameters{};
    parameters.cbSize = sizeof parameters;
    parameters.RequestedUsage.dwType = USAGE_MATCH_TYPE_OR;
    parameters.RequestedUsage.Usage = {1, &usage};
    FILETIME moment = rules.moment == nullptr ? FILETIME{} : *rules.moment;
    UniqueCertificateChain chain;
    CertGetCertificateChain(nullptr, certificate, rules.moment == nullptr ? nullptr : &moment, certificate->hCertStore,
                            &parameters, rules.flags, nullptr, chain.put());
    return chain;
}

ChainFault faultOf(PCCERT_CHAIN_CONTEXT chain) noexcept {
    const DWORD status = chain->TrustStatus.dwErrorStatus;
    if ((status & CERT_TRUST_IS_NOT_TIME_VALID) != 0) {
        return ChainFault::kNotValidThen;
    }
    if ((status & (CERT_TRUST_IS_UNTRUSTED_ROOT | CERT_TRUST_IS_PARTIAL_CHAIN)) != 0) {
        return ChainFault::kUnknownAuthority;
    }
    return status == 0 ? ChainFault::kNone : ChainFault::kOther;
}

std::string numbered(DWORD error) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "error %08lX", error);
    return text.data();
}

} // namespace windows
