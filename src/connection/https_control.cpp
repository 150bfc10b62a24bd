#include "connection/https_control.h"

#include "base/runtime_error.h"
#include "base/text.h"

#include <algorithm>
#include <utility>

namespace connection {
namespace {

using Kind = ports::HttpOutcome::Kind;

// The lowest status that is no success for a request that must not be redirected, and for any request.
constexpr std::int32_t kRedirection = 300;
constexpr std::int32_t kError = 400;

std::string protocolError(const ports::HttpOutcome& outcome) {
    return "HTTP protocol error. " + std::to_string(outcome.status) + " " + outcome.reason;
}

template <typename Handler, typename... Arguments>
void raise(const Handler& handler, Arguments&&... arguments) {
    if (handler) {
        handler(std::forward<Arguments>(arguments)...);
    }
}

} // namespace

std::string withEncodedBlanks(std::string_view address) {
    std::string encoded;
    for (const char c : address) {
        c == ' ' ? encoded += "%20" : encoded += c;
    }
    return encoded;
}

HttpsControl::HttpsControl(ports::Network& network, ports::FileSystem& fileSystem)
    : m_fileSystem(fileSystem), m_transport(network.createHttps()) {}

// A request from its beginning to its end, however that comes.
class HttpsControl::Running {
public:
    explicit Running(HttpsControl& control) : m_control(control) {
        control.m_busy = true;
        control.forgetAnswer();
        control.m_bytesSoFar = 0;
        control.m_notWritten.reset();
        if (!control.LocalFile.empty()) {
            control.m_file = std::make_unique<DownloadFile>(control.m_fileSystem, control.LocalFile);
        }
    }
    Running(const Running&) = delete;
    Running& operator=(const Running&) = delete;
    ~Running() {
        m_control.m_file.reset();
        m_control.m_busy = false;
    }

private:
    HttpsControl& m_control;
};

HttpsResult HttpsControl::perform(Action action) {
    if (m_busy) {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
    const Running running(*this);
    const ports::HttpOutcome outcome = m_transport->perform(request(action), *this);
    HttpsResult result = judge(outcome, action);
    if (m_file && result.number == 0 && !systemIsDown()) {
        writeToFile([&] { m_file->keep(); });
    }
    if (m_notWritten) {
        result = *m_notWritten;
    }
    tell(outcome, result);
    return result;
}

void HttpsControl::tell(const ports::HttpOutcome& outcome, const HttpsResult& result) const {
    const bool connected = outcome.broken || outcome.kind == Kind::Answered || m_notWritten;
    if (m_notWritten || (outcome.broken && outcome.kind == Kind::Failed)) {
        raise(onError, result.number, result.description);
    }
    raise(onTransferEnd, outcome.kind == Kind::Answered);
    if (connected) {
        raise(onDisconnected, result.number, result.description);
    }
}

ports::HttpRequest HttpsControl::request(Action action) const {
    ports::HttpRequest request;
    request.method = action == Action::Post ? ports::HttpRequest::Method::Post : ports::HttpRequest::Method::Get;
    request.url = URL;
    request.body = action == Action::Post ? PostData : "";
    request.settings = settings;
    request.useWinInet = UseWinInet;
    request.timeout = TimeOut;
    return request;
}

// A posted request holds a password: it follows no redirection, so one is no answer to it.
HttpsResult HttpsControl::judge(const ports::HttpOutcome& outcome, Action action) const {
    switch (outcome.kind) {
    case Kind::Answered: {
        const bool error = outcome.status >= (action == Action::Post ? kRedirection : kError);
        return error && !systemIsDown() ? HttpsResult{https_error::kNoConnection, protocolError(outcome)}
                                        : HttpsResult{};
    }
    case Kind::TooManyRedirects: return {https_error::kNoConnection, protocolError(outcome)};
    case Kind::ConnectFailed: return {https_error::kNoConnection, outcome.description};
    case Kind::TimedOut: return {https_error::kNoConnection, std::string(kTimedOut)};
    case Kind::Cancelled: return {https_error::kCancelled, "The operation was cancelled."};
    case Kind::Failed: break;
    }
    return {https_error::kTransport + outcome.code, outcome.description};
}

bool HttpsControl::systemIsDown() const {
    return base::containsIgnoringCase(m_response, kSystemDown);
}

void HttpsControl::cancel() noexcept {
    m_transport->cancel();
}

void HttpsControl::forgetAnswer() noexcept {
    m_response.clear();
    m_contentType.clear();
}

void HttpsControl::transferStarted() {
    raise(onTransferStart);
}

void HttpsControl::header(std::string_view field, std::string_view value) {
    if (base::upperCase(field) == "CONTENT-TYPE") {
        m_contentType = value;
    }
    raise(onHeader, field, value);
}

void HttpsControl::received(std::string_view bytes) {
    const std::size_t limit = m_file ? std::min(responseLimit, kKeptOfAFile) : responseLimit;
    m_response += bytes.substr(0, limit - std::min(limit, m_response.size()));
    m_bytesSoFar += static_cast<std::int64_t>(bytes.size());
    if (m_file) {
        writeToFile([&] { m_file->write(bytes); });
    }
    raise(onTransferProgress, m_bytesSoFar, bytes);
}

// A disk that is full or a folder that is shut ends the transfer, as a failure of its own.
void HttpsControl::writeToFile(const std::function<void()>& step) {
    try {
        step();
    } catch (const base::RuntimeError& e) {
        if (e.number() == base::error::kOutOfMemory) {
            throw;
        }
        m_notWritten = HttpsResult{https_error::kNotWritten, e.description()};
        m_transport->cancel();
    }
}

void HttpsControl::idle() {
    raise(onIdle);
}

} // namespace connection
