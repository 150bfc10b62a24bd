#include "windows/adapters/certificate_check.h"

#include "windows/adapters/wide.h"

#include <array>
#include <cstdio>
#include <string_view>

namespace windows {
namespace {

std::string refusal(const std::string& host, std::string_view why) {
    return std::string("The certificate of ").append(host).append(" was refused: ").append(why).append(".");
}

std::string withNumber(DWORD number) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "error %08lX", number);
    return text.data();
}

// What is wrong with the chain; the commonest reasons in words.
std::string chainFault(DWORD status) {
    if ((status & CERT_TRUST_IS_NOT_TIME_VALID) != 0) {
        return "it is not valid today";
    }
    if ((status & (CERT_TRUST_IS_UNTRUSTED_ROOT | CERT_TRUST_IS_PARTIAL_CHAIN)) != 0) {
        return "its authority is unknown here";
    }
    return status == 0 ? std::string() : withNumber(status);
}

std::string policyFault(DWORD error) {
    if (error == static_cast<DWORD>(CERT_E_CN_NO_MATCH)) {
        return "it is for another name";
    }
    return error == 0 ? std::string() : withNumber(error);
}

UniqueCertificateChain chainOf(PCCERT_CONTEXT certificate) {
    char serverAuthentication[] = szOID_PKIX_KP_SERVER_AUTH;
    LPSTR usage = serverAuthentication;
    CERT_CHAIN_PARA rules{};
    rules.cbSize = sizeof rules;
    rules.RequestedUsage.dwType = USAGE_MATCH_TYPE_OR;
    rules.RequestedUsage.Usage = {1, &usage};
    UniqueCertificateChain chain;
    CertGetCertificateChain(nullptr, certificate, nullptr, certificate->hCertStore, &rules, 0, nullptr, chain.put());
    return chain;
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
    const UniqueCertificateChain chain = chainOf(certificate);
    if (!chain) {
        return refusal(host, "it could not be checked");
    }
    // Both are asked: Wine's policy overlooks some faults of the chain.
    std::string why = chainFault(chain.get()->TrustStatus.dwErrorStatus);
    if (why.empty()) {
        why = policyFault(sslPolicyError(chain.get(), toWide(host)));
    }
    return why.empty() ? std::string() : refusal(host, why);
}

} // namespace windows
