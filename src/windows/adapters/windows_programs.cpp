#include "windows/adapters/windows_programs.h"

#include "base/runtime_error.h"
#include "windows/adapters/program_signature.h"
#include "windows/base/handles.h"
#include "windows/base/native_path.h"
#include "windows/base/win32_error.h"

#include <utility>
#include <vector>

#include <windows.h>

#include <shellapi.h>

namespace windows {
namespace {

class OpenFile final : public ports::HeldFile {
public:
    explicit OpenFile(std::string_view path)
        : m_file(CreateFileW(nativePath(path).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                             FILE_ATTRIBUTE_NORMAL, nullptr)) {
        if (!m_file) {
            raiseLastError();
        }
    }
    [[nodiscard]] HANDLE handle() const noexcept { return m_file.get(); }

private:
    UniqueHandle m_file;
};

base::FileVersion fileVersion(const VS_FIXEDFILEINFO& info) {
    return {{HIWORD(info.dwFileVersionMS), LOWORD(info.dwFileVersionMS), HIWORD(info.dwFileVersionLS),
             LOWORD(info.dwFileVersionLS)}};
}

} // namespace

std::optional<base::FileVersion> WindowsPrograms::version(std::string_view path) {
    const std::wstring name = nativePath(path);
    std::vector<BYTE> block(GetFileVersionInfoSizeW(name.c_str(), nullptr));
    if (block.empty() ||
        GetFileVersionInfoW(name.c_str(), 0, static_cast<DWORD>(block.size()), block.data()) == FALSE) {
        return std::nullopt;
    }
    void* info = nullptr;
    UINT size = 0;
    if (VerQueryValueW(block.data(), L"\\", &info, &size) == FALSE || size < sizeof(VS_FIXEDFILEINFO)) {
        return std::nullopt;
    }
    return fileVersion(*static_cast<const VS_FIXEDFILEINFO*>(info));
}

ports::Signature WindowsPrograms::signature(std::string_view path) {
    try {
        const OpenFile file(path);
        return signatureOf(nativePath(path), file.handle());
    } catch (const base::RuntimeError&) {
        return {false, "", "It cannot be read."};
    }
}

std::unique_ptr<ports::HeldFile> WindowsPrograms::hold(std::string_view path) {
    return std::make_unique<OpenFile>(path);
}

void WindowsPrograms::start(std::string_view path) {
    const std::wstring name = nativePath(path);
    SHELLEXECUTEINFOW program{};
    program.cbSize = sizeof program;
    // Started when the call returns, and not on a thread of the shell's later: the caller may be holding the file.
    program.fMask = SEE_MASK_NOASYNC | SEE_MASK_FLAG_NO_UI;
    program.lpFile = name.c_str();
    program.lpParameters = L"";
    program.nShow = SW_SHOWMAXIMIZED;
    ShellExecuteExW(&program);
}

} // namespace windows
