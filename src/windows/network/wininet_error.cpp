#include "windows/network/wininet_error.h"

#include "windows/base/wide.h"

#include <iterator>

#include <wininet.h>

namespace windows {
namespace {

// Texts that callers look for, and texts that not every version of the library has.
const char* ownText(DWORD error) noexcept {
    switch (error) {
    case ERROR_SUCCESS: return "";
    case ERROR_INTERNET_TIMEOUT: return "The operation timed out.";
    case ERROR_INTERNET_HTTPS_TO_HTTP_ON_REDIR: return "The server redirects to an address that is not secure.";
    case ERROR_INTERNET_INVALID_CA:
    case ERROR_INTERNET_SEC_CERT_REV_FAILED:
    case ERROR_INTERNET_SEC_INVALID_CERT:
    case ERROR_INTERNET_SEC_CERT_REVOKED: return "The server's certificate is not trusted.";
    case ERROR_HTTP_INVALID_SERVER_RESPONSE: return "The server's answer is no HTTP.";
    case ERROR_HTTP_REDIRECT_FAILED: return "The server redirects too often.";
    default: return nullptr;
    }
}

} // namespace

ports::HttpOutcome::Kind wininetOutcomeKind(DWORD error) noexcept {
    using Kind = ports::HttpOutcome::Kind;
    switch (error) {
    case ERROR_SUCCESS: return Kind::Answered;
    case ERROR_INTERNET_CANNOT_CONNECT: return Kind::ConnectFailed;
    case ERROR_INTERNET_TIMEOUT: return Kind::TimedOut;
    case ERROR_INTERNET_OPERATION_CANCELLED: return Kind::Cancelled;
    case ERROR_HTTP_REDIRECT_FAILED: return Kind::TooManyRedirects;
    default: return Kind::Failed;
    }
}

std::string wininetErrorText(DWORD error) {
    if (const char* text = ownText(error)) {
        return text;
    }
    wchar_t text[512];
    const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_HMODULE | FORMAT_MESSAGE_FROM_SYSTEM |
                                            FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                                        GetModuleHandleW(L"wininet.dll"), error, 0, text, std::size(text), nullptr);
    std::wstring_view line(text, length);
    line.remove_suffix(line.size() - (line.find_last_not_of(L' ') + 1));
    return line.empty() ? "WinInet error " + std::to_string(error) : fromWide(line);
}

} // namespace windows
