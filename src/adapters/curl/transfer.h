// One request on its way through libcurl.
#pragma once

#include "adapters/curl/curl_handles.h"
#include "adapters/curl/curl_system.h"
#include "adapters/http/answer_head.h"
#include "ports/https.h"

#include <array>
#include <chrono>
#include <exception>
#include <string>
#include <string_view>

namespace adapters {

class Transfer {
public:
    // Everything is borrowed for the life of the object; `system` may be null. Raises 7.
    Transfer(const ports::HttpRequest& request, ports::HttpEvents& events, CurlSystem* system,
             const std::string& caFile);

    // Once. Raises 7 and what events raise.
    [[nodiscard]] ports::HttpOutcome run(CURLM* multi);

    // Makes run() return without another event.
    void cancel() noexcept { m_cancelled = true; }

private:
    using Clock = std::chrono::steady_clock;

    void setCallbacks();
    [[nodiscard]] CURLcode drive(CURLM* multi);
    [[nodiscard]] bool silentTooLong(bool socketReady) noexcept;
    [[nodiscard]] ports::HttpOutcome outcome(CURLcode result) const;
    [[nodiscard]] std::string describe(CURLcode result) const;
    [[nodiscard]] bool tunnelRefused() const noexcept;
    [[nodiscard]] bool refusalCutOff(CURLcode result) const noexcept;

    // libcurl calls these; each says whether to go on.
    bool connected();
    bool headerLine(std::string_view line);
    bool headEnds();

    [[nodiscard]] bool stopped() const noexcept { return m_cancelled || m_thrown != nullptr; }
    // Nothing that is raised may pass through libcurl: it is kept, and run() raises it again.
    template <typename Step>
    bool guarded(Step&& step) noexcept;

    const ports::HttpRequest& m_request;
    ports::HttpEvents& m_events;
    CurlSystem* m_system;
    List m_headers;
    Easy m_easy;
    std::array<char, CURL_ERROR_SIZE> m_errorText{};
    CURLcode m_optionResult;

    bool m_cancelled = false;
    std::exception_ptr m_thrown;
    std::string m_certificateFault;
    Clock::time_point m_lastByte; // until the connection stands: the beginning
    bool m_resolving = false;     // a thread of libcurl may be looking up a name
    bool m_started = false;       // transferStarted() was told
    bool m_requestOut = false;    // to the server: what comes before is a proxy's answer to a tunnel
    bool m_inHead = false;
    AnswerHead m_head;       // of the server's last answer that began
    AnswerHead m_tunnelHead; // of a proxy's last answer to a tunnel
    bool m_began = false;    // the server's last answer, and no redirect leads away from it
};

} // namespace adapters
