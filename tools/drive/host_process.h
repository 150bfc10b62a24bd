// The program under test: started with its output in a file, so that what it prints can be waited for.
#pragma once

#include <windows.h>

#include <optional>
#include <string>
#include <string_view>

namespace drive {

class HostProcess {
public:
    HostProcess() = default;
    HostProcess(const HostProcess&) = delete;
    HostProcess& operator=(const HostProcess&) = delete;
    // Ends the program if it still runs.
    ~HostProcess();

    // Throws Failure when it cannot be started. An earlier program must have ended.
    void start(std::string_view commandLine);

    [[nodiscard]] bool started() const noexcept { return m_process != nullptr; }
    [[nodiscard]] DWORD id() const noexcept { return m_id; }
    // Empty while it runs.
    [[nodiscard]] std::optional<DWORD> exitCode() const;
    // All that it has printed so far, to standard output and standard error, byte for byte.
    [[nodiscard]] std::string output() const;

private:
    void forget();

    HANDLE m_process = nullptr;
    DWORD m_id = 0;
    std::wstring m_outputPath;
};

} // namespace drive
