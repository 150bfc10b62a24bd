#include "windows/adapters/program_signature.h"

#include "windows/adapters/signed_message.h"
#include "windows/base/wide.h"
#include "windows/network/certificate_chain.h"

#include <string_view>

#include <softpub.h>

namespace windows {
namespace {

// One check by the system, with what it has found out on the way.
class SystemCheck {
public:
    SystemCheck(const std::wstring& path, HANDLE file) {
        m_file.cbStruct = sizeof m_file;
        m_file.pcwszFilePath = path.c_str();
        m_file.hFile = file;
        m_data.cbStruct = sizeof m_data;
        m_data.dwUIChoice = WTD_UI_NONE;
        m_data.fdwRevocationChecks = WTD_REVOKE_NONE;
        m_data.dwUnionChoice = WTD_CHOICE_FILE;
        m_data.pFile = &m_file;
        m_data.dwProvFlags = WTD_REVOCATION_CHECK_NONE | WTD_CACHE_ONLY_URL_RETRIEVAL;
        m_result = act(WTD_STATEACTION_VERIFY);
    }
    SystemCheck(const SystemCheck&) = delete;
    SystemCheck& operator=(const SystemCheck&) = delete;
    ~SystemCheck() { act(WTD_STATEACTION_CLOSE); }

    [[nodiscard]] LONG result() const noexcept { return m_result; }

    // Null when it is not known.
    [[nodiscard]] HCRYPTMSG message() const noexcept { return found() == nullptr ? nullptr : found()->hMsg; }
    [[nodiscard]] const CRYPT_PROVIDER_SGNR* signer() const noexcept {
        return found() == nullptr ? nullptr : WTHelperGetProvSignerFromChain(found(), 0, FALSE, 0);
    }

private:
    [[nodiscard]] CRYPT_PROVIDER_DATA* found() const noexcept {
        return WTHelperProvDataFromStateData(m_data.hWVTStateData);
    }
    LONG act(DWORD action) noexcept {
        GUID rules = WINTRUST_ACTION_GENERIC_VERIFY_V2;
        m_data.dwStateAction = action;
        return WinVerifyTrust(static_cast<HWND>(INVALID_HANDLE_VALUE), &rules, &m_data); // that window: no questions
    }

    WINTRUST_FILE_INFO m_file{};
    WINTRUST_DATA m_data{};
    LONG m_result;
};

constexpr const char* kChanged = "It was changed after it was signed.";

ports::Signature refused(std::string problem) {
    return {false, "", std::move(problem)};
}

ports::Signature refused(DWORD error) {
    return refused("Its signature could not be verified (" + numbered(error) + ").");
}

ports::Signature refused(ChainFault fault, DWORD error) {
    switch (fault) {
    case ChainFault::kNotValidThen: return refused("Its signer's certificate has expired, or is not valid yet.");
    case ChainFault::kUnknownAuthority: return refused("Its signer is not known on this computer.");
    default: return refused(error);
    }
}

ports::Signature refusedBySystem(LONG result) {
    switch (result) {
    case TRUST_E_NOSIGNATURE:
    case TRUST_E_SUBJECT_FORM_UNKNOWN:
    case TRUST_E_PROVIDER_UNKNOWN: return refused("It is not signed.");
    case TRUST_E_BAD_DIGEST: return refused(kChanged);
    case CERT_E_EXPIRED: return refused(ChainFault::kNotValidThen, 0);
    case CERT_E_CHAINING:
    case CERT_E_UNTRUSTEDROOT: return refused(ChainFault::kUnknownAuthority, 0);
    default: return refused(static_cast<DWORD>(result));
    }
}

std::string commonName(PCCERT_CONTEXT certificate) {
    char attribute[] = szOID_COMMON_NAME;
    const auto name = [&](wchar_t* text, DWORD size) {
        return CertGetNameStringW(certificate, CERT_NAME_ATTR_TYPE, 0, attribute, text, size);
    };
    std::wstring text(name(nullptr, 0), L'\0');
    text.resize(name(text.data(), static_cast<DWORD>(text.size())) - 1);
    return fromWide(text);
}

// By the signer's certificate, at the moment that the system has settled on: that of a countersignature which it
// trusts, otherwise now.
ports::Signature ofSigner(const CRYPT_PROVIDER_SGNR& signer) {
    PCCERT_CONTEXT const certificate = signer.pasCertChain[0].pCert;
    const UniqueCertificateChain chain =
        chainOf(certificate, {szOID_PKIX_KP_CODE_SIGNING, &signer.sftVerifyAsOf, CERT_CHAIN_CACHE_ONLY_URL_RETRIEVAL});
    if (!chain) {
        return refused(GetLastError());
    }
    const ChainFault fault = faultOf(chain.get());
    return fault == ChainFault::kNone ? ports::Signature{true, commonName(certificate), ""}
                                      : refused(fault, chain.get()->TrustStatus.dwErrorStatus);
}

} // namespace

ports::Signature signatureOf(const std::wstring& path, HANDLE file) {
    const SystemCheck check(path, file);
    if (check.result() != ERROR_SUCCESS) {
        return refusedBySystem(check.result());
    }
    const CRYPT_PROVIDER_SGNR* const signer = check.signer();
    if (signer == nullptr || signer->csCertChain == 0) {
        return refused(static_cast<DWORD>(TRUST_E_NO_SIGNER_CERT));
    }
    // Windows has looked at all that follows. Wine has not: it lets pass another program's signature whose digest was
    // replaced, signers whom nobody knows, and every fault of their certificates.
    if (!contentIsAsSigned(check.message(), *signer->psSigner)) {
        return refused(kChanged);
    }
    return ofSigner(*signer);
}

} // namespace windows
