#include "windows/network/wininet_address.h"

#include "windows/base/wide.h"

namespace windows {

WinInetAddress::WinInetAddress(std::string_view url) {
    const std::wstring wide = toWide(url);
    URL_COMPONENTSW parts{};
    parts.dwStructSize = sizeof parts;
    // Not zero: pointers into the text are wanted.
    parts.dwHostNameLength = parts.dwUrlPathLength = parts.dwExtraInfoLength = 1;
    if (!InternetCrackUrlW(wide.c_str(), static_cast<DWORD>(wide.size()), 0, &parts)) {
        // For an empty text the error would be none of WinInet's.
        m_error = wide.empty() ? ERROR_INTERNET_INVALID_URL : GetLastError();
        return;
    }
    if (parts.nScheme != INTERNET_SCHEME_HTTP && parts.nScheme != INTERNET_SCHEME_HTTPS) {
        m_error = ERROR_INTERNET_UNRECOGNIZED_SCHEME;
        return;
    }
    m_secure = parts.nScheme == INTERNET_SCHEME_HTTPS;
    m_host.assign(parts.lpszHostName, parts.dwHostNameLength);
    m_port = parts.nPort;
    m_target.assign(parts.lpszUrlPath, parts.dwUrlPathLength);
    m_target.append(parts.lpszExtraInfo, parts.dwExtraInfoLength);
    m_target.erase(std::min(m_target.find(L'#'), m_target.size()));
    if (m_target.empty() || m_target.front() != L'/') {
        m_target.insert(0, 1, L'/');
    }
    if (m_host.empty()) {
        m_error = ERROR_INTERNET_INVALID_URL;
    }
}

bool WinInetAddress::sameServer(const WinInetAddress& other) const noexcept {
    return m_secure == other.m_secure && m_port == other.m_port && m_host == other.m_host;
}

std::string combined(std::string_view base, std::string_view relative) {
    const std::wstring wideBase = toWide(base);
    const std::wstring wideRelative = toWide(relative);
    // Each byte can become three characters, and the separators are few.
    std::wstring whole((wideBase.size() + wideRelative.size()) * 3 + 16, L'\0');
    auto length = static_cast<DWORD>(whole.size());
    if (!InternetCombineUrlW(wideBase.c_str(), wideRelative.c_str(), whole.data(), &length, ICU_BROWSER_MODE)) {
        return {};
    }
    whole.resize(length);
    return fromWide(whole);
}

} // namespace windows
