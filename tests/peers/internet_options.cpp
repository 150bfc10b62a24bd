#include "peers/internet_options.h"

#include <windows.h>

namespace peers {

void forgetProxyVariables() {
    for (const wchar_t* variable : {L"http_proxy", L"https_proxy", L"all_proxy"}) {
        SetEnvironmentVariableW(variable, nullptr);
    }
}

void setSystemProxy(const std::string& proxy) {
    constexpr const wchar_t* kOptions = L"Software\\Microsoft\\Windows\\CurrentVersion\\Internet Settings";
    const DWORD used = proxy.empty() ? 0 : 1;
    const std::wstring server(proxy.begin(), proxy.end()); // ASCII
    RegSetKeyValueW(HKEY_CURRENT_USER, kOptions, L"ProxyEnable", REG_DWORD, &used, sizeof used);
    RegSetKeyValueW(HKEY_CURRENT_USER, kOptions, L"ProxyServer", REG_SZ, server.c_str(),
                    static_cast<DWORD>((server.size() + 1) * sizeof(wchar_t)));
}

} // namespace peers
