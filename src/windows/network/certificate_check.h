// Whether a server's certificate is good, by the system's authorities and rules.
#pragma once

#include "windows/network/certificate_chain.h"

#include <string>

namespace windows {

// Why `certificate` is not good for a server called `host`, in one line; "" when it is. The store that it came in may
// hold the certificates between it and its authority. Does not ask the network for revocations.
[[nodiscard]] std::string serverCertificateFault(PCCERT_CONTEXT certificate, const std::string& host);

} // namespace windows
