#include "connection/https_control.h"

#include "base/resume_next.h"
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

HttpsControl::HttpsControl(ports::Network& network, ports::FileSystem& fileSystem)
    : m_fileSystem(fileSystem), m_transport(network.createHttps()) {}

// A request from its beginning to its end, however that comes.
class HttpsControl::Running {
public:
    explicit Running(HttpsControl& control) : m_control(control) {
        control.m_busy = true;
        control.m_cancelled = false;
        if (!control.LocalFile.empty()) {
            using enum DownloadFile::WhenBroken;
            control.m_file = std::make_unique<DownloadFile>(control.m_fileSystem, control.LocalFile, control.URL,
                                                            control.Resume ? Resume : Discard);
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
    Performed performed = performOnce(action);
    if (m_file && m_file->refusesRest(m_answer) && !m_cancelled) { // it is another file by now
        writeToFile([&] { m_file->removePart(); });
        performed = performOnce(action);
    }
    tell(performed.outcome, performed.result);
    return performed.result;
}

HttpsControl::Performed HttpsControl::performOnce(Action action) {
    forgetAnswer();
    m_bytesSoFar = 0;
    m_fileBegun = false;
    m_notWritten.reset();
    Performed performed;
    performed.outcome = m_transport->perform(request(action), *this);
    performed.result = judge(performed.outcome, action);
    if (m_file && !systemIsDown()) {
        if (performed.result.number == 0) {
            putFileInPlace();
        } else if (!m_notWritten) {
            base::resumeNext([&] { m_file->leave(); });
        }
    }
    if (m_notWritten) {
        performed.result = *m_notWritten;
    }
    return performed;
}

// The transport has counted the bytes of one answer; a file may be made of two.
void HttpsControl::putFileInPlace() {
    if (m_file->complete()) {
        writeToFile([&] { m_file->keep(); });
    } else {
        m_notWritten = HttpsResult{https_error::kIncomplete, "The file is not as long as the server says."};
    }
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
    if (m_file) {
        request.headers = m_file->requestHeaders();
    }
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
    m_cancelled = true;
    m_transport->cancel();
}

void HttpsControl::forgetAnswer() noexcept {
    m_response.clear();
    m_contentType.clear();
    m_answer = {};
}

void HttpsControl::transferStarted() {
    raise(onTransferStart);
}

void HttpsControl::answered(std::int32_t status) {
    m_answer.status = status;
}

void HttpsControl::header(std::string_view field, std::string_view value) {
    if (base::upperCase(field) == "CONTENT-TYPE") {
        m_contentType = value;
    }
    m_answer.take(field, value);
    raise(onHeader, field, value);
}

void HttpsControl::received(std::string_view bytes) {
    const std::size_t limit = m_file ? std::min(responseLimit, kKeptOfAFile) : responseLimit;
    m_response += bytes.substr(0, limit - std::min(limit, m_response.size()));
    m_bytesSoFar += static_cast<std::int64_t>(bytes.size());
    if (m_file && m_answer.status < kRedirection) {
        receiveFile(bytes);
    }
    raise(onTransferProgress, m_bytesSoFar, bytes);
}

void HttpsControl::receiveFile(std::string_view bytes) {
    if (m_file->refusesRest(m_answer)) {
        m_transport->cancel();
        return;
    }
    writeToFile([&] {
        if (!std::exchange(m_fileBegun, true)) {
            m_file->begin(m_answer);
        }
        m_file->write(bytes);
    });
}

// A disk that is full or a folder that is shut ends the transfer, as a failure of its own.
void HttpsControl::writeToFile(const std::function<void()>& step) {
    if (const auto error = base::attempt(step)) {
        m_notWritten = HttpsResult{https_error::kNotWritten, error->description()};
        m_transport->cancel();
    }
}

void HttpsControl::idle() {
    raise(onIdle);
}

} // namespace connection
