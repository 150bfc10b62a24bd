#include "adapters/curl/curl_https.h"

#include "adapters/curl/curl_handles.h"
#include "adapters/curl/transfer.h"
#include "base/runtime_error.h"

#include <utility>

namespace adapters {

// Made anew when the settings change: a connection or a tunnel that was opened under others must not serve.
struct CurlHttps::Connections {
    explicit Connections(ports::HttpSettings forSettings) : settings(std::move(forSettings)) {}

    CurlLibrary library;
    ports::HttpSettings settings;
    Multi multi = makeMulti();
};

CurlHttps::CurlHttps(std::unique_ptr<CurlSystem> system, std::string caFile)
    : m_system(std::move(system)),
      m_caFile(std::move(caFile)),
      m_connections(std::make_unique<Connections>(ports::HttpSettings{})) {}

CurlHttps::~CurlHttps() = default;

ports::HttpOutcome CurlHttps::perform(const ports::HttpRequest& request, ports::HttpEvents& events) {
    if (m_running != nullptr) {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
    if (!(m_connections->settings == request.settings)) {
        m_connections = std::make_unique<Connections>(request.settings);
    }
    struct Running {
        explicit Running(Transfer*& place, Transfer& transfer) : slot(place) { slot = &transfer; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        ~Running() { slot = nullptr; }
        Transfer*& slot;
    };
    Transfer transfer(request, events, m_system.get(), m_caFile);
    const Running running(m_running, transfer);
    return transfer.run(m_connections->multi.get());
}

void CurlHttps::cancel() noexcept {
    if (m_running != nullptr) {
        m_running->cancel();
    }
}

} // namespace adapters
