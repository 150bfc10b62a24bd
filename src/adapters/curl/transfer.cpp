#include "adapters/curl/transfer.h"

#include "adapters/curl/failure.h"
#include "adapters/curl/request_options.h"

#include <utility>

namespace adapters {
namespace {

using ports::HttpOutcome;
using Kind = HttpOutcome::Kind;

constexpr int kPollMs = 40; // below the 50 ms of the port: timers of some systems are late by as much as 15

// A transfer belongs to the connections only while it runs.
class Membership {
public:
    Membership(CURLM* multi, CURL* easy) : m_multi(multi), m_easy(easy) {
        if (curl_multi_add_handle(multi, easy) != CURLM_OK) {
            throw base::RuntimeError(base::error::kOutOfMemory);
        }
    }
    Membership(const Membership&) = delete;
    Membership& operator=(const Membership&) = delete;
    ~Membership() { curl_multi_remove_handle(m_multi, m_easy); }

private:
    CURLM* m_multi;
    CURL* m_easy;
};

CURLcode resultOf(CURLM* multi) {
    int left = 0;
    while (const CURLMsg* message = curl_multi_info_read(multi, &left)) {
        if (message->msg == CURLMSG_DONE) {
            return message->data.result;
        }
    }
    return CURLE_OK;
}

struct Address {
    bool secure = false;
    std::string host;
};

// Of the request that is about to go out: after a redirect another one than that of the beginning.
Address currentAddress(CURL* easy) {
    const char* effective = nullptr;
    curl_easy_getinfo(easy, CURLINFO_EFFECTIVE_URL, &effective);
    const Url url = made(Url(curl_url()));
    curl_url_set(url.get(), CURLUPART_URL, effective, CURLU_GUESS_SCHEME);
    const auto part = [&url](CURLUPart which) {
        char* text = nullptr;
        curl_url_get(url.get(), which, &text, 0);
        const CurlText owner(text);
        return std::string(text == nullptr ? "" : text);
    };
    return {part(CURLUPART_SCHEME) == "https", part(CURLUPART_HOST)};
}

} // namespace

template <typename Step>
bool Transfer::guarded(Step&& step) noexcept {
    if (stopped()) {
        return false;
    }
    try {
        return std::forward<Step>(step)() && !stopped();
    } catch (...) {
        m_thrown = std::current_exception();
        return false;
    }
}

Transfer::Transfer(const ports::HttpRequest& request, ports::HttpEvents& events, CurlSystem* system,
                   const std::string& caFile)
    : m_request(request),
      m_events(events),
      m_system(system),
      m_headers(headerLines(request)),
      m_easy(makeEasy()),
      m_optionResult(setOptions(m_easy.get(), request, m_headers.get(), caFile)),
      m_lastByte(Clock::now()) {
    setCallbacks();
}

void Transfer::setCallbacks() {
    CURL* easy = m_easy.get();
    curl_easy_setopt(easy, CURLOPT_ERRORBUFFER, m_errorText.data());

    curl_easy_setopt(easy, CURLOPT_RESOLVER_START_DATA, this);
    curl_easy_setopt(
        easy, CURLOPT_RESOLVER_START_FUNCTION, +[](void*, void*, void* self) noexcept {
            static_cast<Transfer*>(self)->m_resolving = true;
            return 0;
        });
    curl_easy_setopt(easy, CURLOPT_SOCKOPTDATA, this);
    curl_easy_setopt(
        easy, CURLOPT_SOCKOPTFUNCTION, +[](void* self, curl_socket_t, curlsocktype) noexcept {
            auto& transfer = *static_cast<Transfer*>(self);
            transfer.m_resolving = false;
            transfer.m_requestOut = false; // a new connection, perhaps through a tunnel of its own
            return static_cast<int>(CURL_SOCKOPT_OK);
        });
    curl_easy_setopt(easy, CURLOPT_PREREQDATA, this);
    curl_easy_setopt(
        easy, CURLOPT_PREREQFUNCTION, +[](void* self, char*, char*, int, int) noexcept {
            auto& transfer = *static_cast<Transfer*>(self);
            const bool goOn = transfer.guarded([&] { return transfer.connected(); });
            return goOn ? CURL_PREREQFUNC_OK : CURL_PREREQFUNC_ABORT;
        });
    curl_easy_setopt(easy, CURLOPT_HEADERDATA, this);
    curl_easy_setopt(
        easy, CURLOPT_HEADERFUNCTION, +[](char* data, size_t, size_t size, void* self) noexcept {
            auto& transfer = *static_cast<Transfer*>(self);
            return transfer.guarded([&] { return transfer.headerLine({data, size}); }) ? size : 0;
        });
    curl_easy_setopt(easy, CURLOPT_WRITEDATA, this);
    curl_easy_setopt(
        easy, CURLOPT_WRITEFUNCTION, +[](char* data, size_t, size_t size, void* self) noexcept {
            auto& transfer = *static_cast<Transfer*>(self);
            const bool goOn = transfer.guarded([&] {
                transfer.m_events.received({data, size});
                return true;
            });
            return goOn ? size : size_t{CURL_WRITEFUNC_ERROR};
        });
}

HttpOutcome Transfer::run(CURLM* multi) {
    if (const std::string fault = requestFault(m_request); !fault.empty()) {
        return failed(CURLE_BAD_FUNCTION_ARGUMENT, fault);
    }
    CURLcode result = m_optionResult;
    if (result == CURLE_OK) {
        const Membership member(multi, m_easy.get());
        result = drive(multi);
    }
    if (m_resolving && result != CURLE_COULDNT_RESOLVE_HOST && result != CURLE_COULDNT_RESOLVE_PROXY) {
        // The look-up goes on in its thread: library and code stay, for good.
        curl_global_init(CURL_GLOBAL_DEFAULT);
        if (m_system != nullptr) {
            m_system->keepCodeLoaded();
        }
    }
    if (m_thrown) {
        std::rethrow_exception(m_thrown);
    }
    if (result == CURLE_OUT_OF_MEMORY) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    return outcome(result);
}

CURLcode Transfer::drive(CURLM* multi) {
    while (true) {
        int running = 0;
        if (curl_multi_perform(multi, &running) != CURLM_OK) {
            return CURLE_OUT_OF_MEMORY;
        }
        if (stopped()) {
            return CURLE_ABORTED_BY_CALLBACK;
        }
        if (running == 0) {
            return resultOf(multi);
        }
        int ready = 0;
        if (curl_multi_poll(multi, nullptr, 0, kPollMs, &ready) != CURLM_OK) {
            return CURLE_OUT_OF_MEMORY;
        }
        if (silentTooLong(ready > 0)) {
            return CURLE_OPERATION_TIMEDOUT;
        }
        const bool goOn = guarded([this] {
            m_events.idle();
            return true;
        });
        if (!goOn) {
            return CURLE_ABORTED_BY_CALLBACK;
        }
    }
}

// Once the connection stands, libcurl waits for nothing but sockets that take or bring bytes. Before, only the clock
// counts: a proxy or a handshake that drips keeps nobody waiting for longer.
bool Transfer::silentTooLong(bool socketReady) noexcept {
    const auto now = Clock::now();
    if (socketReady && m_started) {
        m_lastByte = now;
    }
    return now - m_lastByte >= m_request.timeout;
}

bool Transfer::connected() {
    const Address address = currentAddress(m_easy.get());
    if (address.secure) {
        // Where one request was secret, no redirect makes the next one public.
        curl_easy_setopt(m_easy.get(), CURLOPT_REDIR_PROTOCOLS_STR, "https");
        if (m_system != nullptr) {
            const curl_tlssessioninfo* session = nullptr;
            curl_easy_getinfo(m_easy.get(), CURLINFO_TLS_SSL_PTR, &session);
            m_certificateFault =
                m_system->certificateFault(session == nullptr ? nullptr : session->internals, address.host);
            if (!m_certificateFault.empty()) {
                return false;
            }
        }
    }
    m_requestOut = true;
    m_lastByte = Clock::now();
    if (!std::exchange(m_started, true)) {
        m_events.transferStarted();
    }
    return true;
}

bool Transfer::headerLine(std::string_view line) {
    if (AnswerHead::begins(line)) {
        (m_requestOut ? m_head : m_tunnelHead) = AnswerHead::fromStatusLine(line);
        m_inHead = true;
        m_began = m_requestOut && m_head.status >= 200;
        return true;
    }
    if (!m_inHead || !m_requestOut) {
        return true; // a field after the body, or a proxy's about a tunnel
    }
    if (line != "\r\n" && line != "\n") {
        m_head.add(line);
        return true;
    }
    m_inHead = false;
    return headEnds();
}

// Only now it shows whether this answer is the one to tell of.
bool Transfer::headEnds() {
    if (m_head.status < 200) {
        return true; // another one follows
    }
    const bool follows = m_request.method == ports::HttpRequest::Method::Get;
    const std::string* location = m_head.find("Location");
    if (follows && m_head.status >= 300 && m_head.status < 400 && location != nullptr && !location->empty()) {
        m_began = false;
        return true;
    }
    m_events.answered(m_head.status);
    for (const ports::HttpHeader& header : m_head.fields) {
        if (stopped()) {
            return false;
        }
        m_events.header(header.field, header.value);
    }
    return true;
}

bool Transfer::tunnelRefused() const noexcept {
    return !m_requestOut && m_tunnelHead.status >= 300;
}

// Proxies refuse a login without reading the body of the request; closing then resets the connection, and may cut off
// the page that says so. What was refused, and by which status, is known.
bool Transfer::refusalCutOff(CURLcode result) const noexcept {
    const bool cutOff = result == CURLE_RECV_ERROR || result == CURLE_SEND_ERROR || result == CURLE_PARTIAL_FILE;
    return cutOff && m_requestOut && m_began && !m_inHead && m_head.status >= 400;
}

std::string Transfer::describe(CURLcode result) const {
    if (result == CURLE_OPERATION_TIMEDOUT) {
        return "The operation timed out.";
    }
    return oneLine(m_errorText[0] != '\0' ? m_errorText.data() : curl_easy_strerror(result));
}

HttpOutcome Transfer::outcome(CURLcode result) const {
    const bool noTunnel = result == CURLE_RECV_ERROR && tunnelRefused();
    HttpOutcome end;
    if (m_cancelled) {
        end = failed(CURLE_ABORTED_BY_CALLBACK, curl_easy_strerror(CURLE_ABORTED_BY_CALLBACK));
        end.kind = Kind::Cancelled;
    } else if (!m_certificateFault.empty()) {
        end = failed(CURLE_PEER_FAILED_VERIFICATION, m_certificateFault);
    } else if (result != CURLE_OK && !noTunnel && !refusalCutOff(result)) {
        end = failed(result, describe(result));
    }
    if (const AnswerHead& head = noTunnel ? m_tunnelHead : m_head; head.status >= 200) {
        end.status = head.status;
        end.reason = head.reason.empty() ? standardReason(head.status) : head.reason;
    }
    end.broken = end.kind != Kind::Answered && m_began;
    return end;
}

} // namespace adapters
