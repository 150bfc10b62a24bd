// The system below the transport over libcurl: its verdict on certificates, its hold on our code.
#pragma once

#include "adapters/curl/curl_system.h"

namespace windows {

// Verifies for itself, after the TLS library has: Wine's takes every certificate.
class SchannelSystem final : public adapters::CurlSystem {
public:
    [[nodiscard]] std::string certificateFault(const void* session, const std::string& host) override;
    void keepCodeLoaded() noexcept override;
};

} // namespace windows
