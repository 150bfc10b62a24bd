#include "windows/network/certificate_check.h"

#include "windows/base/wide.h"

#include <string_view>

namespace windows {
namespace {

std::string refusal(const std::string& host, std::string_view why) {
    return std::string("The certificate of ").append(host).append(" was refused: ").append(why).append(".");
}

// What is wrong with the chain; the commonest reasons in words.
std::string chainFault(PCCERT_CHAIN_CONTEXT chain) {
    switch (faultOf(chain)) {
    case ChainFault::kNone: return {};
    case ChainFault::kNotValidThen: return "it is not valid today";
    case ChainFault::kUnknownAuthority: return "its authority is unknown here";
    case ChainFault::kOther: break;
    }
    return numbered(chain->TrustStatus.dwErrorStatus);
}

std::string policyFault(DWORD error) {
    if (error == static_cast<DWORD>(CERT_E_CN_NO_MATCH)) {
        return "it is for another name";
    }
    return error == 0 ? std::string() : numbered(error);
}

DWORD sslPolicyError(PCCERT_CHAIN_CONTEXT chain, std::wstring host) {
    SSL_EXTRA_CERT_CHAIN_POLICY_PARA ssl{};
    ssl.cbSize = sizeof ssl;
    ssl.dwAuthType = AUTHTYPE_SERVER;
    ssl.pwszServerName = host.data();
    CERT_CHAIN_POLICY_PARA rules{};
    rules.cbSize = sizeof rules;
    rules.pvExtraPolicyPara = &ssl;
    CERT_CHAIN_POLICY_STATUS status{};
    status.cbSize = sizeof status;
    if (CertVerifyCertificateChainPolicy(CERT_CHAIN_POLICY_SSL, chain, &rules, &status) == FALSE) {
        return static_cast<DWORD>(CERT_E_CRITICAL);
    }
    return status.dwError;
}

} // namespace

std::string serverCertificateFault(PCCERT_CONTEXT certificate, const std::string& host) {
    const UniqueCertificateChain chain = chainOf(certificate, {szOID_PKIX_KP_SERVER_AUTH});
    if (!chain) {
        return refusal(host, "it could not be checked");
    }
    // Both are asked: Wine's policy overlooks some faults of the chain.
    std::string why = chainFault(chain.get());
    if (why.empty()) {
        why = policyFault(sslPolicyError(chain.get(), toWide(host)));
    }
    return why.empty() ? std::string() : refusal(host, why);
}

} // namespace windows
