#include "windows/base/native_path.h"

#include "base/runtime_error.h"
#include "windows/base/wide.h"

#include <windows.h>

namespace windows {
namespace {

// Folders stop at 248 characters, files at 260, and a temporary file's name is four longer than its target's.
constexpr std::size_t kOrdinaryLimit = 240;

std::wstring fullPath(const std::wstring& path) {
    std::wstring full(GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    const DWORD length = GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr);
    full.resize(length < full.size() ? length : 0);
    return full;
}

} // namespace

std::wstring nativePath(std::string_view path) {
    std::wstring wide = toWide(path);
    if (wide.find(L'\0') != wide.npos) {
        throw base::RuntimeError(base::error::kBadFileName);
    }
    if (wide.size() < kOrdinaryLimit || wide.starts_with(L"\\\\?\\")) {
        return wide;
    }
    const std::wstring full = fullPath(wide);
    if (full.empty() || full.starts_with(L"\\\\?\\") || full.starts_with(L"\\\\.\\")) {
        return wide;
    }
    return full.starts_with(L"\\\\") ? L"\\\\?\\UNC" + full.substr(1) : L"\\\\?\\" + full;
}

} // namespace windows
