// Writes beside itself, as PROGRAM.started, that it was started and how: its show state and its parameters.
#include <string>

#include <windows.h>

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR parameters, int show) {
    std::wstring self(32768, L'\0');
    self.resize(GetModuleFileNameW(nullptr, self.data(), static_cast<DWORD>(self.size())));
    const std::wstring text = L"show " + std::to_wstring(show) + L", parameters '" + parameters + L"'";
    const std::string line(text.begin(), text.end()); // all ASCII

    // Under its final name once it is whole: somebody is waiting for it.
    const std::wstring temporary = self + L".tmp";
    const HANDLE file = CreateFileW(temporary.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
    DWORD written = 0;
    const bool whole = WriteFile(file, line.data(), static_cast<DWORD>(line.size()), &written, nullptr) != FALSE;
    CloseHandle(file);
    return whole && MoveFileExW(temporary.c_str(), (self + L".started").c_str(), MOVEFILE_REPLACE_EXISTING) ? 0 : 1;
}
