#include "windows/network/wininet_https.h"

#include "base/runtime_error.h"
#include "windows/network/wininet_transfer.h"

namespace windows {

ports::HttpOutcome WinInetHttps::perform(const ports::HttpRequest& request, ports::HttpEvents& events) {
    if (m_running) {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
    struct Running {
        explicit Running(bool& flag) : running(flag) { running = true; }
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;
        ~Running() { running = false; }
        bool& running;
    };
    const Running running(m_running);
    m_cancelled = false;
    return WinInetTransfer(request, events, m_cancelled).run();
}

void WinInetHttps::cancel() noexcept {
    m_cancelled = m_running;
}

} // namespace windows
