// Dial-up through the remote access service of Windows, rasapi32.dll.
#pragma once

#include "ports/dialer.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <windows.h>

#include <ras.h>

namespace windows {

class RasLibrary;

// What the service says of a line comes as messages, so from the message loop of the thread that dials; all calls come
// from that thread.
class RasDialer final : public ports::Dialer {
public:
    RasDialer();
    ~RasDialer() override;

    [[nodiscard]] std::vector<std::string> phoneBook() override;
    void dial(std::string_view entry, ports::DialEvents& events) override;
    void hangUp() noexcept override;
    void forget() noexcept override { m_events = nullptr; }
    [[nodiscard]] bool connected() const noexcept override;

private:
    static LRESULT CALLBACK windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    // Loaded when it is first asked for: a system without it only has no dial-up. Null then.
    [[nodiscard]] const RasLibrary* ras();
    void listen();
    void stopListening() noexcept;
    void stateChanged(RASCONNSTATE state, DWORD failure) noexcept;
    void fail(DWORD failure) noexcept;
    // Hangs up and waits until the line is free, as the service demands before it is dialled again.
    void drop() noexcept;

    std::unique_ptr<const RasLibrary> m_ras;
    HWND m_window = nullptr; // the service's messages come here; one per attempt, so that none of an older one does
    HRASCONN m_line = nullptr;
    bool m_connected = false;
    ports::DialEvents* m_events = nullptr;
};

} // namespace windows
