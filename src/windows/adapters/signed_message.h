// Whether a signed message holds what its signer has signed.
#pragma once

#include <windows.h>

#include <wincrypt.h>

namespace windows {

// A signer signs a list of attributes, and one of them is the digest of the content: true when it is that of the
// content that `message` has now. The content's type is any but plain data, as with programs.
[[nodiscard]] bool contentIsAsSigned(HCRYPTMSG message, const CMSG_SIGNER_INFO& signer);

} // namespace windows
