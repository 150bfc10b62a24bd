#include "windows/adapters/windows_file_system.h"

#include "base/runtime_error.h"
#include "windows/adapters/crash_safe_save.h"
#include "windows/adapters/handles.h"
#include "windows/adapters/native_path.h"
#include "windows/adapters/win32_error.h"

#include <limits>
#include <utility>

#include <windows.h>

namespace windows {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

// The attributes of what the path names; empty (INVALID_FILE_ATTRIBUTES) for names that could match several files.
DWORD attributesOf(std::string_view path) noexcept {
    if (path.empty() || path.find_first_of("*?") != path.npos) {
        return INVALID_FILE_ATTRIBUTES;
    }
    try {
        return GetFileAttributesW(nativePath(path).c_str());
    } catch (...) {
        return INVALID_FILE_ATTRIBUTES; // a question about existence has no other answer than no
    }
}

bool isFolder(DWORD attributes) noexcept {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool isReadOnlyFile(DWORD attributes) noexcept {
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY) != 0;
}

// Room for a file of that size, as far as one string can hold it.
void reserveFor(HANDLE file, std::string& bytes) {
    LARGE_INTEGER size{};
    if (!GetFileSizeEx(file, &size)) {
        return; // not a disk file; it is read to its end all the same
    }
    if (size.QuadPart > std::numeric_limits<std::int32_t>::max()) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    bytes.reserve(static_cast<std::size_t>(size.QuadPart) + 1);
}

std::string readToEnd(HANDLE file) {
    std::string bytes;
    reserveFor(file, bytes);
    for (;;) {
        const std::size_t filled = bytes.size();
        bytes.resize(bytes.capacity() > filled ? bytes.capacity() : filled + 4096);
        DWORD count = 0;
        if (!ReadFile(file, bytes.data() + filled, static_cast<DWORD>(bytes.size() - filled), &count, nullptr)) {
            raiseLastError();
        }
        bytes.resize(filled + count);
        if (count == 0) {
            return bytes;
        }
    }
}

} // namespace

WindowsFileSystem::WindowsFileSystem() : WindowsFileSystem([](unsigned milliseconds) { Sleep(milliseconds); }) {}

WindowsFileSystem::WindowsFileSystem(Pause pause) : m_pause(std::move(pause)) {}

bool WindowsFileSystem::fileExists(std::string_view path) {
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !isFolder(attributes) && path.back() != '\\' && path.back() != '/';
}

bool WindowsFileSystem::folderExists(std::string_view path) {
    return isFolder(attributesOf(path));
}

void WindowsFileSystem::createFolder(std::string_view path) {
    if (!CreateDirectoryW(nativePath(path).c_str(), nullptr)) {
        raiseLastError(Attempt::kMakeFolder);
    }
}

std::string WindowsFileSystem::readFile(std::string_view path) {
    const std::wstring name = nativePath(path);
    UniqueHandle file;
    const DWORD failure = retryWhileShared(m_pause, [&]() -> DWORD {
        file.reset(CreateFileW(name.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN,
                               nullptr));
        return file ? ERROR_SUCCESS : GetLastError();
    });
    if (failure != ERROR_SUCCESS) {
        raise(failure);
    }
    return readToEnd(file.get());
}

void WindowsFileSystem::replaceFile(std::string_view path, std::string_view bytes) {
    const DWORD attributes = attributesOf(path);
    if (isFolder(attributes) || isReadOnlyFile(attributes)) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    crashSafeSave(nativePath(path), bytes, m_pause);
}

void WindowsFileSystem::moveFile(std::string_view from, std::string_view to) {
    if (isFolder(attributesOf(from))) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    if (!MoveFileExW(nativePath(from).c_str(), nativePath(to).c_str(),
                     MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH)) {
        raiseLastError();
    }
}

void WindowsFileSystem::removeFile(std::string_view path) {
    if (isReadOnlyFile(attributesOf(path))) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    if (!DeleteFileW(nativePath(path).c_str())) {
        raiseLastError();
    }
}

} // namespace windows
