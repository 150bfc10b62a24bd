#include "windows/com/com_support.h"

#include <gtest/gtest.h>

#include <thread>

namespace com_test {
namespace {

struct Handle {
    HANDLE value = nullptr;
    ~Handle() { close(); }
    void close() {
        if (value != nullptr) {
            CloseHandle(value);
            value = nullptr;
        }
    }
};

std::string readToEnd(HANDLE pipe) {
    std::string text;
    char buffer[4096];
    DWORD count = 0;
    while (ReadFile(pipe, buffer, sizeof buffer, &count, nullptr) && count > 0) {
        text.append(buffer, count);
    }
    std::erase(text, '\r');
    return text;
}

} // namespace

std::wstring besideThisProgram(std::wstring_view name) {
    wchar_t path[MAX_PATH];
    GetModuleFileNameW(nullptr, path, MAX_PATH);
    const std::wstring program = path;
    return program.substr(0, program.find_last_of(L'\\') + 1).append(name);
}

std::wstring dllPath() {
    return besideThisProgram(L"QuorvantisImage.dll");
}

LoadedDll::LoadedDll(const std::wstring& path) : m_module(LoadLibraryW(path.c_str())) {
    EXPECT_NE(m_module, nullptr) << "error " << GetLastError();
}

LoadedDll::~LoadedDll() {
    FreeLibrary(m_module);
}

HRESULT LoadedDll::call(const char* entry) const {
    const auto function =
        reinterpret_cast<HRESULT(STDAPICALLTYPE*)()>(reinterpret_cast<void*>(GetProcAddress(m_module, entry)));
    return function == nullptr ? E_NOTIMPL : function();
}

HRESULT LoadedDll::getClassObject(REFCLSID clsid, REFIID iid, void** object) const {
    const auto function = reinterpret_cast<HRESULT(STDAPICALLTYPE*)(REFCLSID, REFIID, void**)>(
        reinterpret_cast<void*>(GetProcAddress(m_module, "DllGetClassObject")));
    return function == nullptr ? E_NOTIMPL : function(clsid, iid, object);
}

void pumpUntilEnd(std::thread& thread) {
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        DispatchMessageW(&message);
    }
    thread.join();
}

HostRun runProgram(std::wstring command, const Meanwhile& meanwhile) {
    HostRun run;
    Handle reading;
    Handle writing;
    SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
    if (!CreatePipe(&reading.value, &writing.value, &inherited, 0)) {
        return run;
    }
    SetHandleInformation(reading.value, HANDLE_FLAG_INHERIT, 0);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdOutput = writing.value;
    startup.hStdError = writing.value;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &startup, &process)) {
        return run;
    }
    writing.close();
    const Handle processHandle{process.hProcess};
    const Handle threadHandle{process.hThread};
    std::thread reader([&] { run.output = readToEnd(reading.value); });
    const DWORD started = GetTickCount();
    while (WaitForSingleObject(process.hProcess, 20) == WAIT_TIMEOUT) {
        if (GetTickCount() - started > 60'000) {
            TerminateProcess(process.hProcess, 99);
        } else if (meanwhile) {
            meanwhile(process.dwProcessId);
        }
    }
    reader.join();
    GetExitCodeProcess(process.hProcess, &run.exitCode);
    return run;
}

HostRun runScriptHost(std::wstring_view script, std::wstring_view arguments, const Meanwhile& meanwhile) {
    return runProgram(L"cscript.exe //nologo \"" + besideThisProgram(script) + L"\" " + std::wstring(arguments),
                      meanwhile);
}

} // namespace com_test
