#include "windows/network/wininet_call.h"

#include "base/runtime_error.h"
#include "windows/base/keep_loaded.h"

#include <algorithm>
#include <array>
#include <mutex>

#include <wincrypt.h>

namespace windows {

namespace {

bool showsCertificate(HINTERNET request) noexcept {
    PCCERT_CHAIN_CONTEXT chain = nullptr;
    DWORD size = sizeof chain;
    if (!InternetQueryOptionW(request, INTERNET_OPTION_SERVER_CERT_CHAIN_CONTEXT, &chain, &size)) {
        return false;
    }
    CertFreeCertificateChain(chain);
    return true;
}

} // namespace

// Belongs to both sides: WinInet's threads use it until the handle is closed, which can be after the call is gone.
struct WinInetCall::Shared {
    UniqueHandle changed{CreateEventW(nullptr, FALSE, FALSE, nullptr)};
    bool secure = false;
    std::string body;
    DWORD available = 0;
    std::array<char, 32 * 1024> buffer;

    std::mutex mutex; // guards what follows
    News news;
    bool closed = false;
};

WinInetCall::WinInetCall(HINTERNET connection, const wchar_t* verb, const std::wstring& target, DWORD flags)
    : m_shared(std::make_shared<Shared>()) {
    if (!m_shared->changed) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    m_shared->secure = (flags & INTERNET_FLAG_SECURE) != 0;
    // WinInet's own share; given back with the last word about the handle.
    auto* context = new std::shared_ptr<Shared>(m_shared);
    InternetSetStatusCallbackW(connection, &onStatus);
    m_request.reset(HttpOpenRequestW(connection, verb, target.c_str(), nullptr, nullptr, nullptr, flags,
                                     reinterpret_cast<DWORD_PTR>(context)));
    if (!m_request) {
        m_openError = GetLastError();
        delete context;
    }
}

WinInetCall::~WinInetCall() {
    if (!m_request) {
        return;
    }
    m_request.reset();
    const std::scoped_lock lock(m_shared->mutex);
    if (!m_shared->closed) {
        // A thread that looks up a name or connects comes back later, and into our code.
        keepCodeLoaded();
    }
}

void CALLBACK WinInetCall::onStatus(HINTERNET handle, DWORD_PTR context, DWORD status, void* information,
                                    DWORD /*size*/) noexcept {
    auto* share = reinterpret_cast<std::shared_ptr<Shared>*>(context);
    if (share == nullptr) {
        return;
    }
    Shared& shared = **share;
    // On the way to a secret server the first requests are for a proxy's tunnel.
    const bool goesOut = status == INTERNET_STATUS_SENDING_REQUEST && (!shared.secure || showsCertificate(handle));
    {
        const std::scoped_lock lock(shared.mutex);
        shared.news.any = true;
        if (goesOut) {
            shared.news.sending = true;
        } else if (status == INTERNET_STATUS_REQUEST_SENT) {
            shared.news.sent = true;
        } else if (status == INTERNET_STATUS_REQUEST_COMPLETE) {
            const auto& result = *static_cast<const INTERNET_ASYNC_RESULT*>(information);
            shared.news.completion = result.dwResult != 0 ? ERROR_SUCCESS : result.dwError;
        }
        shared.closed = status == INTERNET_STATUS_HANDLE_CLOSING;
    }
    SetEvent(shared.changed.get());
    if (status == INTERNET_STATUS_HANDLE_CLOSING) {
        delete share;
    }
}

DWORD WinInetCall::send(const std::wstring& headers, std::string_view body) {
    if (!m_request) {
        return m_openError;
    }
    m_shared->body = body;
    const bool done = HttpSendRequestW(m_request.get(), headers.c_str(), static_cast<DWORD>(headers.size()),
                                       m_shared->body.data(), static_cast<DWORD>(m_shared->body.size()));
    return done ? ERROR_SUCCESS : GetLastError();
}

DWORD WinInetCall::requestData() {
    {
        // What a step reported that was done without waiting is old.
        const std::scoped_lock lock(m_shared->mutex);
        m_shared->news.completion.reset();
    }
    m_shared->available = 0;
    return InternetQueryDataAvailable(m_request.get(), &m_shared->available, 0, 0) ? ERROR_SUCCESS : GetLastError();
}

DWORD WinInetCall::takeData(std::string_view& bytes) {
    // No more than what is there: reading that does not wait.
    DWORD size = std::min(m_shared->available, static_cast<DWORD>(m_shared->buffer.size()));
    if (size != 0 && !InternetReadFile(m_request.get(), m_shared->buffer.data(), size, &size)) {
        return GetLastError();
    }
    bytes = {m_shared->buffer.data(), size};
    return ERROR_SUCCESS;
}

WinInetCall::News WinInetCall::look(std::chrono::milliseconds time) {
    WaitForSingleObject(m_shared->changed.get(), static_cast<DWORD>(time.count()));
    const std::scoped_lock lock(m_shared->mutex);
    News news = m_shared->news;
    m_shared->news.any = false;
    m_shared->news.completion.reset();
    return news;
}

bool WinInetCall::encrypted() const noexcept {
    return showsCertificate(m_request.get());
}

std::string WinInetCall::rawHead() const {
    std::string head;
    DWORD size = 0;
    HttpQueryInfoA(m_request.get(), HTTP_QUERY_RAW_HEADERS_CRLF, nullptr, &size, nullptr);
    head.resize(size);
    if (size == 0 || !HttpQueryInfoA(m_request.get(), HTTP_QUERY_RAW_HEADERS_CRLF, head.data(), &size, nullptr)) {
        return {};
    }
    head.resize(size);
    return head;
}

} // namespace windows
