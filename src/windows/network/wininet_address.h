// A web address in the parts that WinInet takes.
#pragma once

#include <string>
#include <string_view>

#include <windows.h>

#include <wininet.h>

namespace windows {

class WinInetAddress {
public:
    explicit WinInetAddress(std::string_view url);

    // ERROR_SUCCESS; 12005 for what is no absolute address, 12006 for another scheme than http and https.
    [[nodiscard]] DWORD error() const noexcept { return m_error; }
    [[nodiscard]] bool secure() const noexcept { return m_secure; }
    [[nodiscard]] const std::wstring& host() const noexcept { return m_host; }
    [[nodiscard]] INTERNET_PORT port() const noexcept { return m_port; }
    // Path and query, never empty.
    [[nodiscard]] const std::wstring& target() const noexcept { return m_target; }
    [[nodiscard]] bool sameServer(const WinInetAddress& other) const noexcept;

private:
    DWORD m_error = ERROR_SUCCESS;
    bool m_secure = false;
    std::wstring m_host;
    INTERNET_PORT m_port = 0;
    std::wstring m_target;
};

// What `relative`, a redirect's target, means on a page at `base`.
[[nodiscard]] std::string combined(std::string_view base, std::string_view relative);

} // namespace windows
