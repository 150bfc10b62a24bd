#include "windows/adapters/windows_file_system.h"

#include "base/runtime_error.h"
#include "windows/adapters/crash_safe_save.h"
#include "windows/base/handles.h"
#include "windows/base/native_path.h"
#include "windows/base/wide.h"
#include "windows/base/win32_error.h"

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

// The read-only mark is tested here and not left to the system, which lets some users through.
void refuseFolderOrReadOnly(DWORD attributes) {
    if (isFolder(attributes) || isReadOnlyFile(attributes)) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
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
    refuseFolderOrReadOnly(attributesOf(path));
    crashSafeSave(nativePath(path), bytes, m_pause);
}

void WindowsFileSystem::appendFile(std::string_view path, std::string_view bytes) {
    refuseFolderOrReadOnly(attributesOf(path));
    const std::wstring name = nativePath(path);
    const UniqueHandle file(CreateFileW(name.c_str(), FILE_APPEND_DATA, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                        FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file) {
        raiseLastError();
    }
    DWORD written = 0;
    if (!WriteFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr)) {
        raiseLastError();
    }
    if (written != bytes.size()) {
        raise(ERROR_DISK_FULL); // some file systems report a full disk in the count alone
    }
}

std::uint64_t WindowsFileSystem::fileSize(std::string_view path) {
    WIN32_FILE_ATTRIBUTE_DATA found{};
    if (!GetFileAttributesExW(nativePath(path).c_str(), GetFileExInfoStandard, &found)) {
        raiseLastError();
    }
    if (isFolder(found.dwFileAttributes)) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    return std::uint64_t{found.nFileSizeHigh} << 32U | found.nFileSizeLow;
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

void WindowsFileSystem::moveOver(std::string_view from, std::string_view to) {
    refuseFolderOrReadOnly(attributesOf(to));
    if (isFolder(attributesOf(from))) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    const std::wstring source = nativePath(from);
    const std::wstring target = nativePath(to);
    const DWORD failure = retryWhileShared(m_pause, [&]() -> DWORD {
        return MoveFileExW(source.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)
                   ? ERROR_SUCCESS
                   : GetLastError();
    });
    if (failure != ERROR_SUCCESS) {
        raise(failure);
    }
}

void WindowsFileSystem::copyFile(std::string_view from, std::string_view to) {
    refuseFolderOrReadOnly(attributesOf(to));
    if (isFolder(attributesOf(from))) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    // Beside the target first: a copy that breaks off must not leave half a file under the final name.
    const std::string temporary = std::string(to) + ".tmp";
    const std::wstring name = nativePath(temporary);
    if (!CopyFileW(nativePath(from).c_str(), name.c_str(), FALSE)) {
        const DWORD failure = GetLastError();
        DeleteFileW(name.c_str());
        raise(failure);
    }
    SetFileAttributesW(name.c_str(), FILE_ATTRIBUTE_NORMAL); // a read-only source makes no read-only copy
    try {
        moveOver(temporary, to);
    } catch (const base::RuntimeError&) {
        DeleteFileW(name.c_str());
        throw;
    }
}

void WindowsFileSystem::requireWritable(std::string_view path) {
    refuseFolderOrReadOnly(attributesOf(path));
    const std::wstring name = nativePath(path);
    UniqueHandle file(CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD outcome = GetLastError(); // says also whether the file was there
    if (!file) {
        raise(outcome);
    }
    if (outcome != ERROR_ALREADY_EXISTS) {
        file.reset();
        DeleteFileW(name.c_str());
    }
}

void WindowsFileSystem::listFolder(std::string_view folder, const ports::EntryVisitor& visit) {
    std::string pattern(folder);
    if (!pattern.empty() && pattern.back() != '\\' && pattern.back() != '/') {
        pattern += '\\';
    }
    WIN32_FIND_DATAW entry{};
    const UniqueSearch search(FindFirstFileExW(nativePath(pattern + "*").c_str(), FindExInfoStandard, &entry,
                                               FindExSearchNameMatch, nullptr, 0));
    if (!search) {
        const DWORD failure = GetLastError();
        if (failure == ERROR_FILE_NOT_FOUND) {
            return; // the root of an empty drive has no entries at all
        }
        raise(failure);
    }
    do {
        const std::wstring_view name = entry.cFileName;
        if (name != L"." && name != L".." &&
            !visit({fromWide(name), fromWide(entry.cAlternateFileName),
                    (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0})) {
            return;
        }
    } while (FindNextFileW(search.get(), &entry));
    if (const DWORD failure = GetLastError(); failure != ERROR_NO_MORE_FILES) {
        raise(failure);
    }
}

std::vector<std::string> WindowsFileSystem::drives() {
    std::vector<std::string> found;
    const DWORD present = GetLogicalDrives();
    for (unsigned i = 0; i < 26; ++i) {
        if ((present >> i & 1U) != 0) {
            found.push_back({static_cast<char>('A' + i), ':'});
        }
    }
    return found;
}

std::string WindowsFileSystem::currentFolder() {
    std::wstring path(GetCurrentDirectoryW(0, nullptr), L'\0');
    path.resize(GetCurrentDirectoryW(static_cast<DWORD>(path.size()), path.data()));
    return fromWide(path);
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
