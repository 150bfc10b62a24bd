// One request of the port: what WinInet is asked for it, redirects included.
#pragma once

#include "adapters/http/answer_head.h"
#include "ports/https.h"
#include "windows/network/wininet_address.h"
#include "windows/network/wininet_call.h"

#include <chrono>
#include <string>

namespace windows {

class WinInetTransfer {
public:
    // Everything is borrowed for the life of the object. `cancelled` may become true inside an event.
    WinInetTransfer(const ports::HttpRequest& request, ports::HttpEvents& events, const bool& cancelled)
        : m_request(request), m_events(events), m_cancelled(cancelled) {}

    // Once. Raises 7 and what events raise.
    [[nodiscard]] ports::HttpOutcome run();

private:
    DWORD follow(UniqueInternet session);
    DWORD exchange(HINTERNET connection, const WinInetAddress& address, bool givesLogin);
    [[nodiscard]] DWORD flagsFor(const WinInetAddress& address) const noexcept;
    DWORD finish(WinInetCall& call, DWORD begun);
    DWORD readHead(const WinInetCall& call);
    void tellHead();
    DWORD receive(WinInetCall& call);
    [[nodiscard]] const std::string* redirection() const;

    const ports::HttpRequest& m_request;
    ports::HttpEvents& m_events;
    const bool& m_cancelled;
    adapters::AnswerHead m_head; // of the last answer that began
    bool m_started = false;      // transferStarted() was told
    bool m_began = false;        // the last answer is the one to tell of
    bool m_connected = false;    // in this exchange
    std::chrono::steady_clock::time_point m_deadline{};
};

} // namespace windows
