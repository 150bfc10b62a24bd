#include "windows/network/wininet_options.h"

#include "windows/base/wide.h"

#include <algorithm>
#include <chrono>

#include <wincrypt.h>

namespace windows {
namespace {

void setTimeout(HINTERNET handle, DWORD option, std::chrono::milliseconds time) noexcept {
    DWORD milliseconds = static_cast<DWORD>(time.count());
    InternetSetOptionW(handle, option, &milliseconds, sizeof milliseconds);
}

// Text options count characters, without the final zero.
void setText(HINTERNET handle, DWORD option, const std::string& text) {
    std::wstring wide = toWide(text);
    InternetSetOptionW(handle, option, wide.data(), static_cast<DWORD>(wide.size()));
}

// A header line that gives a login without being asked: a body then goes out once, and no server closes the connection
// over one that it does not want yet.
std::string loginLine(const char* field, const std::string& user, const std::string& password) {
    const std::string login = user + ":" + password;
    const auto* bytes = reinterpret_cast<const BYTE*>(login.data());
    std::string encoded(login.size() * 2 + 4, '\0'); // more than Base64 needs
    auto size = static_cast<DWORD>(encoded.size());
    CryptBinaryToStringA(bytes, static_cast<DWORD>(login.size()), CRYPT_STRING_BASE64 | CRYPT_STRING_NOCRLF,
                         encoded.data(), &size);
    encoded.resize(size);
    return std::string(field) + ": Basic " + encoded + "\r\n";
}

bool givesProxyLogin(const ports::HttpSettings& settings) noexcept {
    return !settings.proxyServer.empty() && !settings.proxyUser.empty();
}

} // namespace

std::string wininetRequestFault(const ports::HttpRequest& request) {
    const ports::HttpSettings& settings = request.settings;
    if (!settings.proxyServer.empty() && (settings.proxyPort < 1 || settings.proxyPort > 65'535)) {
        return "The port of the proxy is not between 1 and 65535: " + std::to_string(settings.proxyPort) + ".";
    }
    const auto broken = [](const ports::HttpHeader& header) {
        return (header.field + header.value).find_first_of("\r\n") != std::string::npos;
    };
    if (std::any_of(request.headers.begin(), request.headers.end(), broken)) {
        return "A header of the request holds a line break.";
    }
    return {};
}

UniqueInternet openWinInetSession(const ports::HttpRequest& request) {
    const ports::HttpSettings& settings = request.settings;
    const std::wstring proxy = toWide(settings.proxyServer + ":" + std::to_string(settings.proxyPort));
    const bool direct = settings.proxyServer.empty();
    UniqueInternet session(InternetOpenW(L"QuorvantisImage",
                                         direct ? INTERNET_OPEN_TYPE_PRECONFIG : INTERNET_OPEN_TYPE_PROXY,
                                         direct ? nullptr : proxy.c_str(), nullptr, INTERNET_FLAG_ASYNC));
    // The deadline is our own; WinInet must only not give up before.
    const std::chrono::milliseconds late = request.timeout * 2;
    setTimeout(session.get(), INTERNET_OPTION_CONNECT_TIMEOUT, late);
    setTimeout(session.get(), INTERNET_OPTION_SEND_TIMEOUT, late);
    setTimeout(session.get(), INTERNET_OPTION_RECEIVE_TIMEOUT, late);
    return session;
}

void setWinInetOptions(HINTERNET call, const ports::HttpRequest& request, bool secure) {
    // This one the session's handle does not pass on.
    setTimeout(call, INTERNET_OPTION_RECEIVE_TIMEOUT, request.timeout * 2);
    if (secure && givesProxyLogin(request.settings)) {
        // The proxy is asked for a tunnel, in a request of WinInet's own.
        setText(call, INTERNET_OPTION_PROXY_USERNAME, request.settings.proxyUser);
        setText(call, INTERNET_OPTION_PROXY_PASSWORD, request.settings.proxyPassword);
    }
}

std::string wininetHeaderLines(const ports::HttpRequest& request, bool secure, bool withLogin) {
    const ports::HttpSettings& settings = request.settings;
    std::string lines;
    if (request.method == ports::HttpRequest::Method::Post) {
        lines = "Content-Type: text/xml; charset=utf-8\r\n";
    }
    for (const ports::HttpHeader& header : request.headers) {
        lines += header.field + ": " + header.value + "\r\n";
    }
    if (withLogin && !settings.user.empty()) {
        lines += loginLine("Authorization", settings.user, settings.password);
    }
    if (!secure && givesProxyLogin(settings)) {
        lines += loginLine("Proxy-Authorization", settings.proxyUser, settings.proxyPassword);
    }
    return lines;
}

} // namespace windows
