// Starts a program with its output in a temporary file; a pipe would be inherited by helper processes and never close.
#include "drive/host_process.h"

#include "drive/failure.h"
#include "drive/wide.h"

#include <array>

namespace drive {
namespace {

constexpr DWORD kEveryoneMayUse = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

std::wstring temporaryFile() {
    std::array<wchar_t, MAX_PATH> folder{};
    std::array<wchar_t, MAX_PATH> file{};
    if (GetTempPathW(MAX_PATH, folder.data()) == 0 || GetTempFileNameW(folder.data(), L"qvi", 0, file.data()) == 0) {
        throw Failure("no temporary file for the host's output");
    }
    return file.data();
}

HANDLE openInheritable(const wchar_t* path, DWORD access, DWORD disposition) {
    SECURITY_ATTRIBUTES inherit{sizeof inherit, nullptr, TRUE};
    return CreateFileW(path, access, kEveryoneMayUse, &inherit, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}

} // namespace

HostProcess::~HostProcess() {
    if (m_process != nullptr && !exitCode()) {
        TerminateProcess(m_process, 1);
        WaitForSingleObject(m_process, INFINITE);
    }
    forget();
}

void HostProcess::start(std::string_view commandLine) {
    if (m_process != nullptr && !exitCode()) {
        throw Failure("the host started before still runs");
    }
    forget();
    m_outputPath = temporaryFile();
    const HANDLE output = openInheritable(m_outputPath.c_str(), GENERIC_WRITE, CREATE_ALWAYS);
    const HANDLE input = openInheritable(L"NUL", GENERIC_READ, OPEN_EXISTING);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input;
    startup.hStdOutput = output;
    startup.hStdError = output;
    PROCESS_INFORMATION process{};
    std::wstring command = wide(commandLine);
    const BOOL started =
        CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process);
    const DWORD error = GetLastError();
    CloseHandle(output);
    CloseHandle(input);
    if (started == FALSE) {
        throw Failure("cannot start '" + std::string(commandLine) + "': error " + std::to_string(error));
    }
    CloseHandle(process.hThread);
    m_process = process.hProcess;
    m_id = process.dwProcessId;
}

std::optional<DWORD> HostProcess::exitCode() const {
    if (m_process == nullptr || WaitForSingleObject(m_process, 0) != WAIT_OBJECT_0) {
        return std::nullopt;
    }
    DWORD code = 0;
    GetExitCodeProcess(m_process, &code);
    return code;
}

std::string HostProcess::output() const {
    std::string text;
    const HANDLE file = CreateFileW(m_outputPath.c_str(), GENERIC_READ, kEveryoneMayUse, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return text;
    }
    std::array<char, 4096> block{};
    DWORD count = 0;
    while (ReadFile(file, block.data(), static_cast<DWORD>(block.size()), &count, nullptr) != FALSE && count > 0) {
        text.append(block.data(), count);
    }
    CloseHandle(file);
    return text;
}

void HostProcess::forget() {
    if (m_process != nullptr) {
        CloseHandle(m_process);
        m_process = nullptr;
    }
    if (!m_outputPath.empty()) {
        DeleteFileW(m_outputPath.c_str());
        m_outputPath.clear();
    }
}

} // namespace drive
