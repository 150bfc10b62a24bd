#include "windows/network/selected_https.h"

#include "base/runtime_error.h"

#include <utility>

namespace windows {

SelectedHttps::SelectedHttps(std::unique_ptr<ports::Https> usual, std::unique_ptr<ports::Https> winInet)
    : m_usual(std::move(usual)), m_winInet(std::move(winInet)) {}

ports::HttpOutcome SelectedHttps::perform(const ports::HttpRequest& request, ports::HttpEvents& events) {
    if (m_running != nullptr) {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
    const bool winInetCan = request.settings.firewallType == ports::Firewall::None;
    struct Running {
        Running(ports::Https*& place, ports::Https& transport) : slot(place) { slot = &transport; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        ~Running() { slot = nullptr; }
        ports::Https*& slot;
    };
    const Running running(m_running, request.useWinInet && winInetCan ? *m_winInet : *m_usual);
    return m_running->perform(request, events);
}

void SelectedHttps::cancel() noexcept {
    if (m_running != nullptr) {
        m_running->cancel();
    }
}

} // namespace windows
