#include "windows/adapters/crash_safe_save.h"

#include "base/runtime_error.h"
#include "windows/base/handles.h"
#include "windows/base/win32_error.h"

#include <algorithm>
#include <utility>

#include <windows.h>
// after windows.h
#include <aclapi.h>

namespace windows {
namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

enum class Target { kMissing, kReplaceable, kWritableOnly };

DWORD open(UniqueHandle& file, const std::wstring& path, DWORD access, DWORD sharing, DWORD disposition) {
    file.reset(CreateFileW(path.c_str(), access, sharing, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr));
    return file ? ERROR_SUCCESS : GetLastError();
}

// Opens the target the way the save is going to need it, so that a lock or missing rights show before anything is
// written, and so that a file which its owner protects is not replaced by way of its folder.
Target probe(const std::wstring& path, const Pause& pause) {
    UniqueHandle file;
    const auto tryOpen = [&](DWORD access) {
        return retryWhileShared(pause, [&] { return open(file, path, access, kShareAll, OPEN_EXISTING); });
    };
    DWORD failure = tryOpen(GENERIC_WRITE | DELETE);
    if (failure == ERROR_SUCCESS) {
        return Target::kReplaceable;
    }
    if (failure == ERROR_FILE_NOT_FOUND) {
        return Target::kMissing;
    }
    if (failure == ERROR_ACCESS_DENIED) {
        failure = tryOpen(GENERIC_WRITE);
    }
    if (failure != ERROR_SUCCESS) {
        raise(failure);
    }
    return Target::kWritableOnly;
}

void writeAll(HANDLE file, std::string_view bytes) {
    constexpr std::size_t kPiece = std::size_t{16} << 20U;
    while (!bytes.empty()) {
        const auto size = static_cast<DWORD>(std::min(bytes.size(), kPiece));
        DWORD written = 0;
        if (!WriteFile(file, bytes.data(), size, &written, nullptr)) {
            raiseLastError();
        }
        if (written < size) { // some file systems report a full disk only so
            raise(ERROR_DISK_FULL);
        }
        bytes.remove_prefix(size);
    }
}

void flush(HANDLE file) {
    if (!FlushFileBuffers(file)) {
        raiseLastError();
    }
}

void setLength(HANDLE file, LONGLONG length) {
    LARGE_INTEGER position{};
    position.QuadPart = length;
    if (!SetFilePointerEx(file, position, nullptr, FILE_BEGIN) || !SetEndOfFile(file)) {
        raiseLastError();
    }
}

// Takes the room first: a full disk then shows while every old byte is still there.
void writeInPlace(const std::wstring& path, std::string_view bytes, const Pause& pause) {
    UniqueHandle file;
    const DWORD failure =
        retryWhileShared(pause, [&] { return open(file, path, GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING); });
    if (failure != ERROR_SUCCESS) {
        raise(failure);
    }
    LARGE_INTEGER oldSize{};
    if (!GetFileSizeEx(file.get(), &oldSize)) {
        raiseLastError();
    }
    const auto size = static_cast<LONGLONG>(bytes.size());
    if (size > oldSize.QuadPart) {
        setLength(file.get(), size);
    }
    SetFilePointerEx(file.get(), LARGE_INTEGER{}, nullptr, FILE_BEGIN);
    writeAll(file.get(), bytes);
    if (size < oldSize.QuadPart) {
        setLength(file.get(), size);
    }
    flush(file.get());
}

// True for access rights that a new file in the same folder would not get by itself.
bool hasOwnRights(PSECURITY_DESCRIPTOR descriptor, PACL rights) {
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    if (!GetSecurityDescriptorControl(descriptor, &control, &revision)) {
        return false;
    }
    if ((control & SE_DACL_PROTECTED) != 0 || rights == nullptr) {
        return true;
    }
    for (DWORD i = 0; i < rights->AceCount; ++i) {
        void* entry = nullptr;
        if (GetAce(rights, i, &entry) && (static_cast<ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE) == 0) {
            return true;
        }
    }
    return false;
}

// Failures do not matter: a file system without access rights has none to keep.
void copyAccessRights(const std::wstring& from, const std::wstring& to) {
    PACL rights = nullptr;
    UniqueLocal descriptor;
    if (GetNamedSecurityInfoW(from.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &rights,
                              nullptr, descriptor.put()) != ERROR_SUCCESS ||
        !hasOwnRights(descriptor.get(), rights)) {
        return;
    }
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    GetSecurityDescriptorControl(descriptor.get(), &control, &revision);
    const SECURITY_INFORMATION inheritance = (control & SE_DACL_PROTECTED) != 0 ? PROTECTED_DACL_SECURITY_INFORMATION
                                                                                : UNPROTECTED_DACL_SECURITY_INFORMATION;
    std::wstring target = to; // the function takes a modifiable name
    SetNamedSecurityInfoW(target.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION | inheritance, nullptr, nullptr,
                          rights, nullptr);
}

// The temporary file beside the target: removed when it goes without having been moved.
class Temporary {
public:
    explicit Temporary(std::wstring path) : m_path(std::move(path)) {}
    Temporary(const Temporary&) = delete;
    Temporary& operator=(const Temporary&) = delete;
    ~Temporary() {
        if (m_ours) {
            m_file.reset();
            DeleteFileW(m_path.c_str());
        }
    }

    [[nodiscard]] const std::wstring& path() const { return m_path; }

    // Held without sharing but for the move: a second save of the same target has to wait until this one is done.
    [[nodiscard]] DWORD create(const Pause& pause) {
        const DWORD failure = retryWhileShared(
            pause, [&] { return open(m_file, m_path, GENERIC_WRITE, FILE_SHARE_DELETE, CREATE_ALWAYS); });
        m_ours = failure == ERROR_SUCCESS;
        return failure;
    }

    void write(std::string_view bytes) const {
        writeAll(m_file.get(), bytes);
        flush(m_file.get());
    }

    void moveOver(const std::wstring& target, const Pause& pause) {
        const DWORD failure = retryWhileShared(pause, [&]() -> DWORD {
            if (MoveFileExW(m_path.c_str(), target.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
                return ERROR_SUCCESS;
            }
            const DWORD error = GetLastError();
            m_file.reset(); // some file systems do not move an open file
            // The rights were looked at before, so a denial is somebody who has opened the target since.
            return error == ERROR_ACCESS_DENIED ? ERROR_SHARING_VIOLATION : error;
        });
        if (failure != ERROR_SUCCESS) {
            raise(failure);
        }
        m_ours = false;
    }

private:
    std::wstring m_path;
    UniqueHandle m_file;
    bool m_ours = false;
};

bool exists(const std::wstring& path) {
    return GetFileAttributesW(path.c_str()) != INVALID_FILE_ATTRIBUTES;
}

} // namespace

void crashSafeSave(const std::wstring& path, std::string_view bytes, const Pause& pause) {
    const Target target = probe(path, pause);
    if (target == Target::kWritableOnly) {
        writeInPlace(path, bytes, pause);
        return;
    }
    Temporary temporary(path + L".tmp");
    const DWORD failure = temporary.create(pause);
    if (failure == ERROR_ACCESS_DENIED && target == Target::kReplaceable && !exists(temporary.path())) {
        writeInPlace(path, bytes, pause);
        return;
    }
    if (failure != ERROR_SUCCESS) {
        raise(failure);
    }
    temporary.write(bytes);
    if (target == Target::kReplaceable) {
        copyAccessRights(path, temporary.path());
    }
    temporary.moveOver(path, pause);
}

} // namespace windows
