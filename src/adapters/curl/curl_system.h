// What the transport over libcurl asks of the system below it.
#pragma once

#include <string>

namespace adapters {

class CurlSystem {
public:
    CurlSystem() = default;
    CurlSystem(const CurlSystem&) = delete;
    CurlSystem& operator=(const CurlSystem&) = delete;
    virtual ~CurlSystem() = default;

    // Asked on every TLS connection, before each request on it is sent: why the server's certificate is not good for
    // `host`, in one line; "" when it is. `session` is the TLS library's own (CURLINFO_TLS_SSL_PTR), null when unknown.
    [[nodiscard]] virtual std::string certificateFault(const void* session, const std::string& host) = 0;

    // A thread of the library outlives its request: the code that it runs must stay loaded from now on.
    virtual void keepCodeLoaded() noexcept = 0;
};

} // namespace adapters
