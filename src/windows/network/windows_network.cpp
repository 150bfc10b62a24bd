#include "windows/network/windows_network.h"

#include "adapters/curl/curl_https.h"
#include "windows/base/wide.h"
#include "windows/network/ras_dialer.h"
#include "windows/network/schannel_system.h"
#include "windows/network/selected_https.h"
#include "windows/network/wininet_https.h"

#include <winsock2.h>

#include <windows.h>

namespace windows {
namespace {

std::string pathOf(const wchar_t* moduleName) {
    wchar_t path[MAX_PATH];
    const DWORD length = GetModuleFileNameW(GetModuleHandleW(moduleName), path, MAX_PATH);
    return length < MAX_PATH ? fromWide({path, length}) : std::string();
}

} // namespace

std::unique_ptr<ports::Https> WindowsNetwork::createHttps() {
    return std::make_unique<SelectedHttps>(std::make_unique<adapters::CurlHttps>(std::make_unique<SchannelSystem>()),
                                           std::make_unique<WinInetHttps>());
}

std::unique_ptr<ports::Dialer> WindowsNetwork::createDialer() {
    return std::make_unique<RasDialer>();
}

ports::SocketLayer WindowsNetwork::socketLayer() {
    ports::SocketLayer layer;
    WSADATA data{};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        return layer;
    }
    layer.description = data.szDescription;
    layer.loaded = true;
    layer.maxDatagramSize = data.iMaxUdpDg;
    layer.maxSockets = data.iMaxSockets;
    layer.path = pathOf(L"ws2_32.dll");
    layer.status = data.szSystemStatus;
    WSACleanup();
    return layer;
}

} // namespace windows
