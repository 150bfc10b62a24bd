#include "windows/network/ras_dialer.h"

#include "windows/base/wide.h"
#include "windows/network/ras_library.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <raserror.h>

namespace windows {
namespace {

constexpr DWORD kNotifyWindow = 0xFFFFFFFF; // the kind of notification that RasDial is asked for
constexpr ULONGLONG kLongestDrop = 3000;    // milliseconds
constexpr DWORD kDropInterval = 10;         // milliseconds

// The message by which the service speaks to a window.
UINT dialMessage() noexcept {
    static const UINT message = RegisterWindowMessageA(RASDIALEVENT);
    return message != 0 ? message : WM_RASDIALEVENT;
}

RASDIALPARAMSW parametersOf(const RasLibrary& ras, std::string_view entry) {
    RASDIALPARAMSW parameters{};
    parameters.dwSize = sizeof parameters;
    const std::wstring name = toWide(entry);
    name.copy(parameters.szEntryName, std::size(parameters.szEntryName) - 1);
    BOOL withPassword = FALSE;
    // Where none are kept, the line is dialled with what this user logged on with.
    ras.getEntryDialParams(nullptr, &parameters, &withPassword);
    return parameters;
}

bool isOver(const RasLibrary& ras, HRASCONN line) noexcept {
    RASCONNSTATUSW status{};
    status.dwSize = sizeof status;
    return ras.getConnectStatus(line, &status) != ERROR_SUCCESS;
}

} // namespace

RasDialer::RasDialer() = default;

RasDialer::~RasDialer() {
    if (!m_connected) {
        hangUp();
    }
    stopListening();
}

const RasLibrary* RasDialer::ras() {
    if (!m_ras) {
        m_ras = std::make_unique<RasLibrary>();
    }
    return m_ras->isComplete() ? m_ras.get() : nullptr;
}

std::vector<std::string> RasDialer::phoneBook() {
    const RasLibrary* const library = ras();
    if (library == nullptr) {
        return {};
    }
    std::vector<RASENTRYNAMEW> entries(1);
    DWORD count = 0;
    DWORD failure = ERROR_BUFFER_TOO_SMALL;
    for (int tries = 0; failure == ERROR_BUFFER_TOO_SMALL && tries < 3; ++tries) { // it may grow in between
        auto size = static_cast<DWORD>(entries.size() * sizeof(RASENTRYNAMEW));
        entries.front().dwSize = sizeof(RASENTRYNAMEW);
        failure = library->enumEntries(nullptr, nullptr, entries.data(), &size, &count);
        entries.resize(std::max<std::size_t>(entries.size(), size / sizeof(RASENTRYNAMEW) + 1));
    }
    std::vector<std::string> names;
    for (DWORD index = 0; failure == ERROR_SUCCESS && index < count; ++index) {
        names.push_back(fromWide(entries[index].szEntryName));
    }
    return names;
}

void RasDialer::dial(std::string_view entry, ports::DialEvents& events) {
    hangUp();
    m_events = &events;
    const RasLibrary* const library = ras();
    if (library == nullptr) {
        fail(ERROR_MOD_NOT_FOUND);
        return;
    }
    listen();
    RASDIALPARAMSW parameters = parametersOf(*library, entry);
    const DWORD failure = library->dial(nullptr, nullptr, &parameters, kNotifyWindow, m_window, &m_line);
    SecureZeroMemory(parameters.szPassword, sizeof parameters.szPassword);
    if (failure != ERROR_SUCCESS) {
        fail(failure);
    }
}

void RasDialer::hangUp() noexcept {
    m_events = nullptr;
    drop();
}

bool RasDialer::connected() const noexcept {
    return m_connected && !isOver(*m_ras, m_line);
}

// Of a class that every process has; nothing of ours is left registered.
void RasDialer::listen() {
    m_window = CreateWindowExW(0, L"Static", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
    SetWindowLongPtrW(m_window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(windowProc));
}

void RasDialer::stopListening() noexcept {
    if (const HWND window = std::exchange(m_window, nullptr)) {
        SetWindowLongPtrW(window, GWLP_USERDATA, 0);
        DestroyWindow(window);
    }
}

LRESULT CALLBACK RasDialer::windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = reinterpret_cast<RasDialer*>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (message == dialMessage() && self != nullptr) {
        self->stateChanged(static_cast<RASCONNSTATE>(wParam), static_cast<DWORD>(lParam));
        return TRUE;
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

void RasDialer::stateChanged(RASCONNSTATE state, DWORD failure) noexcept {
    if (failure != ERROR_SUCCESS || state == RASCS_Disconnected) {
        fail(failure != ERROR_SUCCESS ? failure : ERROR_DISCONNECTION);
        return;
    }
    m_connected = state == RASCS_Connected;
    if (m_events != nullptr) {
        m_events->status(state, rasStateText(state));
    }
    if (m_connected && m_events != nullptr) {
        m_events->connected();
    }
}

void RasDialer::fail(DWORD failure) noexcept {
    drop();
    if (m_events != nullptr) {
        m_events->error(static_cast<std::int32_t>(failure), rasErrorText(ras(), failure));
    }
}

void RasDialer::drop() noexcept {
    stopListening();
    m_connected = false;
    const HRASCONN line = std::exchange(m_line, nullptr);
    if (line == nullptr) {
        return;
    }
    m_ras->hangUp(line);
    const ULONGLONG start = GetTickCount64();
    while (!isOver(*m_ras, line) && GetTickCount64() - start < kLongestDrop) {
        Sleep(kDropInterval);
    }
}

} // namespace windows
