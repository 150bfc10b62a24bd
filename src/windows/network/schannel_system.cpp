#define SECURITY_WIN32
#include "windows/network/schannel_system.h"

#include "windows/base/keep_loaded.h"
#include "windows/network/certificate_check.h"

#include <windows.h>

#include <schannel.h>
#include <security.h>

namespace windows {

std::string SchannelSystem::certificateFault(const void* session, const std::string& host) {
    if (session == nullptr) {
        return "The connection shows no certificate.";
    }
    // The function takes what it only reads through a pointer to changeable data.
    auto* context = static_cast<CtxtHandle*>(const_cast<void*>(session));
    PCCERT_CONTEXT certificate = nullptr;
    if (QueryContextAttributesW(context, SECPKG_ATTR_REMOTE_CERT_CONTEXT, &certificate) != SEC_E_OK) {
        return "The server shows no certificate.";
    }
    const UniqueCertificate owner(certificate);
    return serverCertificateFault(certificate, host);
}

void SchannelSystem::keepCodeLoaded() noexcept {
    windows::keepCodeLoaded();
}

} // namespace windows
