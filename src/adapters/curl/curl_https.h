// The transport over libcurl, on both targets.
#pragma once

#include "adapters/curl/curl_system.h"
#include "ports/https.h"

#include <memory>
#include <string>

namespace adapters {

class Transfer;

// Connections stay open between the requests of one object, as long as the settings stay the same.
class CurlHttps final : public ports::Https {
public:
    // `system` may be null: then libcurl's own verification of certificates is all there is, and the code is never
    // unloaded. `caFile`, certificates in PEM, stands in for the authorities that libcurl trusts by itself. Raises 7.
    explicit CurlHttps(std::unique_ptr<CurlSystem> system = nullptr, std::string caFile = {});
    ~CurlHttps() override;

    ports::HttpOutcome perform(const ports::HttpRequest& request, ports::HttpEvents& events) override;
    void cancel() noexcept override;

private:
    struct Connections;

    std::unique_ptr<CurlSystem> m_system;
    std::string m_caFile;
    std::unique_ptr<Connections> m_connections;
    Transfer* m_running = nullptr; // of perform(), while it runs
};

} // namespace adapters
