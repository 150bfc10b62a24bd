// One request through WinInet in its asynchronous mode: begun here, done by WinInet's threads, looked at from time to
// time by the thread that began it.
#pragma once

#include "windows/network/wininet_handles.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace windows {

class WinInetCall {
public:
    // What happened since the last look.
    struct News {
        bool any = false;
        bool sending = false;            // the connection stands, the request goes out; from then on in every look
        bool sent = false;               // and has gone out whole
        std::optional<DWORD> completion; // of the step that was pending: its error, ERROR_SUCCESS when it went well
    };

    // `connection` must outlive the call; `verb` and `target` as HttpOpenRequest takes them. WinInet's errors show at
    // the first step. Raises 7.
    WinInetCall(HINTERNET connection, const wchar_t* verb, const std::wstring& target, DWORD flags);
    WinInetCall(const WinInetCall&) = delete;
    WinInetCall& operator=(const WinInetCall&) = delete;
    // Ends at once what is pending.
    ~WinInetCall();

    [[nodiscard]] HINTERNET handle() const noexcept { return m_request.get(); }

    // Steps return the error, ERROR_SUCCESS when they are done already, or ERROR_IO_PENDING: look() tells when they
    // are. `headers` are lines that end in CR LF. Both texts are copied: WinInet reads the body until the handle is
    // closed.
    [[nodiscard]] DWORD send(const std::wstring& headers, std::string_view body);
    [[nodiscard]] DWORD requestData();
    // After requestData(), and valid until it is called again. Nothing in it: the body has ended.
    [[nodiscard]] DWORD takeData(std::string_view& bytes);

    // Waits for news at most this long.
    [[nodiscard]] News look(std::chrono::milliseconds time);

    // Whether the server has shown a certificate: its answer, and no proxy's.
    [[nodiscard]] bool encrypted() const noexcept;

    // The answer's head, status line first, as bytes of its lines.
    [[nodiscard]] std::string rawHead() const;

private:
    struct Shared;
    static void CALLBACK onStatus(HINTERNET handle, DWORD_PTR context, DWORD status, void* information,
                                  DWORD size) noexcept;

    std::shared_ptr<Shared> m_shared;
    UniqueInternet m_request;
    DWORD m_openError = ERROR_SUCCESS;
};

} // namespace windows
