#include "windows/network/wininet_transfer.h"

#include "windows/base/wide.h"
#include "windows/network/wininet_error.h"
#include "windows/network/wininet_options.h"

#include <algorithm>
#include <charconv>
#include <utility>

namespace windows {
namespace {

using ports::HttpOutcome;
using ports::HttpRequest;
using Clock = std::chrono::steady_clock;

// Messages are handled in between, so well below the 50 ms that are promised.
constexpr std::chrono::milliseconds kLookTime{25};
constexpr int kMostRedirects = 5;
// WinInet says that a body has gone out, not how far it has come: so much of one makes up for a second of silence.
constexpr std::size_t kSlowestBytesPerSecond = 1000;

constexpr DWORD kAlways = INTERNET_FLAG_RELOAD | INTERNET_FLAG_NO_CACHE_WRITE | INTERNET_FLAG_NO_COOKIES |
                          INTERNET_FLAG_NO_UI | INTERNET_FLAG_NO_AUTO_REDIRECT;

} // namespace

HttpOutcome WinInetTransfer::run() {
    HttpOutcome outcome;
    if (const std::string fault = wininetRequestFault(m_request); !fault.empty()) {
        outcome.kind = HttpOutcome::Kind::Failed;
        outcome.code = ERROR_INVALID_PARAMETER;
        outcome.description = fault;
        return outcome;
    }
    DWORD error = follow(openWinInetSession(m_request));
    if (m_cancelled) {
        error = ERROR_INTERNET_OPERATION_CANCELLED;
    }
    outcome.kind = wininetOutcomeKind(error);
    outcome.code = static_cast<std::int32_t>(error);
    outcome.description = wininetErrorText(error);
    outcome.status = m_head.status;
    outcome.reason = m_head.reason.empty() ? adapters::standardReason(m_head.status) : m_head.reason;
    outcome.broken = error != ERROR_SUCCESS && m_began;
    return outcome;
}

DWORD WinInetTransfer::follow(UniqueInternet session) {
    std::string url = m_request.url;
    const WinInetAddress first(url);
    bool secret = false;
    for (int redirects = 0;; ++redirects) {
        const WinInetAddress address(url);
        if (address.error() != ERROR_SUCCESS) {
            return address.error();
        }
        // Where one request was secret, no redirect makes the next one public.
        secret = secret || address.secure();
        if (secret && !address.secure()) {
            return ERROR_INTERNET_HTTPS_TO_HTTP_ON_REDIR;
        }
        const UniqueInternet connection(InternetConnectW(session.get(), address.host().c_str(), address.port(), nullptr,
                                                         nullptr, INTERNET_SERVICE_HTTP, 0, 0));
        if (!connection) {
            return GetLastError();
        }
        // The login is for the server that the caller named.
        const DWORD error = exchange(connection.get(), address, address.sameServer(first));
        const std::string* target = redirection();
        if (error != ERROR_SUCCESS || m_cancelled || target == nullptr) {
            return error;
        }
        if (redirects == kMostRedirects) {
            return ERROR_HTTP_REDIRECT_FAILED;
        }
        url = combined(url, *target);
    }
}

DWORD WinInetTransfer::exchange(HINTERNET connection, const WinInetAddress& address, bool givesLogin) {
    const bool post = m_request.method == HttpRequest::Method::Post;
    WinInetCall call(connection, post ? L"POST" : L"GET", address.target(), flagsFor(address));
    setWinInetOptions(call.handle(), m_request, address.secure());
    const std::string headers = wininetHeaderLines(m_request, address.secure(), givesLogin);
    m_began = false;
    m_connected = false;
    m_deadline = Clock::now() + m_request.timeout;
    DWORD error = finish(call, call.send(toWide(headers), post ? m_request.body : std::string_view()));
    if (error == ERROR_SUCCESS && !m_cancelled) {
        error = readHead(call);
    }
    if (error != ERROR_SUCCESS || m_cancelled || redirection() != nullptr) {
        return error;
    }
    if (address.secure() && !call.encrypted()) {
        // A proxy's refusal of the tunnel: its status says all, its page is not the server's.
        return ERROR_SUCCESS;
    }
    tellHead();
    return m_cancelled ? ERROR_INTERNET_OPERATION_CANCELLED : receive(call);
}

DWORD WinInetTransfer::flagsFor(const WinInetAddress& address) const noexcept {
    DWORD flags = kAlways;
    if (address.secure()) {
        flags |= INTERNET_FLAG_SECURE;
    }
    // WinInet does not ask under which login a tunnel was opened: none is kept for the next request.
    if (!address.secure() || m_request.settings.proxyServer.empty()) {
        flags |= INTERNET_FLAG_KEEP_CONNECTION;
    }
    return flags;
}

// Waits for a step that was begun. With m_cancelled set the result means nothing.
DWORD WinInetTransfer::finish(WinInetCall& call, DWORD begun) {
    while (begun == ERROR_IO_PENDING) {
        const WinInetCall::News news = call.look(kLookTime);
        if (news.sending && !std::exchange(m_started, true)) {
            m_events.transferStarted();
        }
        if (news.sending && !std::exchange(m_connected, true)) {
            m_deadline =
                Clock::now() + m_request.timeout + std::chrono::seconds(m_request.body.size() / kSlowestBytesPerSecond);
        } else if (news.any && news.sent) {
            m_deadline = Clock::now() + m_request.timeout;
        }
        if (!m_cancelled) {
            m_events.idle();
        }
        if (m_cancelled) {
            return ERROR_INTERNET_OPERATION_CANCELLED;
        }
        if (news.completion) {
            return *news.completion;
        }
        if (Clock::now() >= m_deadline) {
            return ERROR_INTERNET_TIMEOUT;
        }
    }
    return begun;
}

DWORD WinInetTransfer::readHead(const WinInetCall& call) {
    const std::string raw = call.rawHead();
    std::string_view lines = raw;
    const auto nextLine = [&lines] {
        const std::string_view line = lines.substr(0, lines.find("\r\n"));
        lines.remove_prefix(std::min(line.size() + 2, lines.size()));
        return line;
    };
    const std::string_view statusLine = nextLine();
    if (!adapters::AnswerHead::begins(statusLine)) {
        return ERROR_HTTP_INVALID_SERVER_RESPONSE;
    }
    m_head = adapters::AnswerHead::fromStatusLine(statusLine);
    while (!lines.empty()) {
        m_head.add(nextLine());
    }
    // What WinInet makes up for an answer that is no HTTP at all.
    const bool madeUp = statusLine == "HTTP/1.0 200 OK" && m_head.fields.empty();
    return madeUp ? ERROR_HTTP_INVALID_SERVER_RESPONSE : ERROR_SUCCESS;
}

const std::string* WinInetTransfer::redirection() const {
    const bool moved = m_head.status >= 300 && m_head.status < 400;
    const std::string* target = m_head.find("Location");
    const bool follows = moved && m_request.method == HttpRequest::Method::Get && target != nullptr && !target->empty();
    return follows ? target : nullptr;
}

void WinInetTransfer::tellHead() {
    m_began = true;
    if (!std::exchange(m_started, true)) {
        m_events.transferStarted();
    }
    m_events.answered(m_head.status);
    for (const ports::HttpHeader& header : m_head.fields) {
        if (m_cancelled) {
            break;
        }
        m_events.header(header.field, header.value);
    }
}

DWORD WinInetTransfer::receive(WinInetCall& call) {
    std::uint64_t received = 0;
    while (true) {
        DWORD error = finish(call, call.requestData());
        std::string_view bytes;
        if (error == ERROR_SUCCESS && !m_cancelled) {
            error = call.takeData(bytes);
        }
        if (error != ERROR_SUCCESS || m_cancelled) {
            return error;
        }
        if (bytes.empty()) {
            break;
        }
        m_deadline = Clock::now() + m_request.timeout;
        received += bytes.size();
        m_events.received(bytes);
        if (!m_cancelled) {
            m_events.idle();
        }
    }
    // WinInet takes the end of the connection for the end of the body.
    std::uint64_t announced = received;
    if (const std::string* length = m_head.find("Content-Length"); length != nullptr) {
        std::from_chars(length->data(), length->data() + length->size(), announced);
    }
    return received < announced ? ERROR_INTERNET_CONNECTION_ABORTED : ERROR_SUCCESS;
}

} // namespace windows
