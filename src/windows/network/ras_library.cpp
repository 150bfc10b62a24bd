#include "windows/network/ras_library.h"

#include "windows/base/wide.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace windows {
namespace {

// From nowhere else: the program's own folder would be searched first.
std::wstring systemFile(const wchar_t* name) {
    std::array<wchar_t, MAX_PATH> folder{};
    GetSystemDirectoryW(folder.data(), static_cast<UINT>(folder.size()));
    return std::wstring(folder.data()) + L"\\" + name;
}

template <typename Function>
void find(HMODULE module, const char* name, Function& function) noexcept {
    function = reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

struct State {
    RASCONNSTATE state;
    std::string_view text;
};

constexpr std::array kStates{
    State{RASCS_OpenPort, "Opening the port..."},
    State{RASCS_PortOpened, "The port is open"},
    State{RASCS_ConnectDevice, "Dialing..."},
    State{RASCS_DeviceConnected, "The other side answers"},
    State{RASCS_AllDevicesConnected, "The line stands"},
    State{RASCS_Authenticate, "Verifying user name and password..."},
    State{RASCS_AuthNotify, "Verifying user name and password..."},
    State{RASCS_AuthRetry, "Verifying user name and password again..."},
    State{RASCS_Authenticated, "User name and password are verified"},
    State{RASCS_WaitForModemReset, "Waiting for the modem..."},
    State{RASCS_WaitForCallback, "Waiting to be called back..."},
    State{RASCS_LogonNetwork, "Logging on to the network..."},
    State{RASCS_PasswordExpired, "The password has expired"},
    State{RASCS_Connected, "Connected"},
    State{RASCS_Disconnected, "Disconnected"},
};

} // namespace

RasLibrary::RasLibrary() : m_module(LoadLibraryW(systemFile(L"rasapi32.dll").c_str())) {
    if (m_module) {
        find(m_module.get(), "RasEnumEntriesW", enumEntries);
        find(m_module.get(), "RasGetEntryDialParamsW", getEntryDialParams);
        find(m_module.get(), "RasDialW", dial);
        find(m_module.get(), "RasHangUpW", hangUp);
        find(m_module.get(), "RasGetConnectStatusW", getConnectStatus);
        find(m_module.get(), "RasGetErrorStringW", getErrorString);
    }
}

bool RasLibrary::isComplete() const noexcept {
    return enumEntries != nullptr && getEntryDialParams != nullptr && dial != nullptr && hangUp != nullptr &&
           getConnectStatus != nullptr && getErrorString != nullptr;
}

std::string rasErrorText(const RasLibrary* library, DWORD failure) {
    std::array<wchar_t, 512> text{};
    constexpr auto kSize = static_cast<DWORD>(std::tuple_size_v<decltype(text)>);
    if (library == nullptr || library->getErrorString(failure, text.data(), kSize) != ERROR_SUCCESS) {
        FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                       nullptr, failure, 0, text.data(), kSize, nullptr);
    }
    std::string line = fromWide(text.data());
    line.erase(line.find_last_not_of(" \r\n") + 1);
    return line;
}

std::string_view rasStateText(RASCONNSTATE state) noexcept {
    const auto* const found =
        std::find_if(kStates.begin(), kStates.end(), [&](const State& entry) { return entry.state == state; });
    return found == kStates.end() ? "Connecting..." : found->text;
}

} // namespace windows
