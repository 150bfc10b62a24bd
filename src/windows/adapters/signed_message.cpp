#include "windows/adapters/signed_message.h"

#include <algorithm>
#include <span>
#include <vector>

namespace windows {
namespace {

using Bytes = std::vector<BYTE>;

Bytes contentOf(HCRYPTMSG message) {
    DWORD size = 0;
    CryptMsgGetParam(message, CMSG_CONTENT_PARAM, 0, nullptr, &size);
    Bytes content(size);
    content.resize(CryptMsgGetParam(message, CMSG_CONTENT_PARAM, 0, content.data(), &size) ? size : 0);
    return content;
}

// An element of DER without its tag and length, which the digest leaves out.
std::span<const BYTE> valueOf(std::span<const BYTE> element) {
    if (element.size() < 2) {
        return {};
    }
    const std::size_t header = element[1] < 0x80 ? 2 : 2 + std::size_t{element[1]} - 0x80;
    return header > element.size() ? std::span<const BYTE>() : element.subspan(header);
}

Bytes digestOf(std::span<const BYTE> value, const char* algorithm) {
    Bytes digest(64);
    auto size = static_cast<DWORD>(digest.size());
    const ALG_ID id = CertOIDToAlgId(algorithm);
    const bool known = id != 0 && CryptHashCertificate(0, id, 0, value.data(), static_cast<DWORD>(value.size()),
                                                       digest.data(), &size) != FALSE;
    digest.resize(known ? size : 0);
    return digest;
}

// What the signer's list says; empty when it says nothing.
std::span<const BYTE> signedDigest(const CMSG_SIGNER_INFO& signer) {
    char name[] = szOID_RSA_messageDigest;
    const CRYPT_ATTRIBUTE* const attribute = CertFindAttribute(name, signer.AuthAttrs.cAttr, signer.AuthAttrs.rgAttr);
    return attribute == nullptr || attribute->cValue != 1
               ? std::span<const BYTE>()
               : valueOf({attribute->rgValue[0].pbData, attribute->rgValue[0].cbData});
}

} // namespace

bool contentIsAsSigned(HCRYPTMSG message, const CMSG_SIGNER_INFO& signer) {
    const Bytes content = contentOf(message);
    const std::span<const BYTE> wanted = signedDigest(signer);
    const auto isWanted = [&](std::span<const BYTE> bytes) {
        const Bytes digest = digestOf(bytes, signer.HashAlgorithm.pszObjId);
        return !digest.empty() && std::ranges::equal(digest, wanted);
    };
    // Whether the content comes with its tag and length depends on its type and the library.
    return isWanted(valueOf(content)) || isWanted(content);
}

} // namespace windows
