#include "windows/base/win32_error.h"

#include "base/runtime_error.h"

#include <windows.h>

namespace windows {

namespace error = base::error;

std::int32_t runtimeErrorNumber(std::uint32_t win32Error, Attempt attempt) noexcept {
    switch (win32Error) {
    case ERROR_FILE_NOT_FOUND: return attempt == Attempt::kMakeFolder ? error::kPathNotFound : error::kFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_DRIVE:
    case ERROR_BAD_NETPATH:
    case ERROR_BAD_NET_NAME: return error::kPathNotFound;
    case ERROR_INVALID_NAME: return error::kBadFileName;
    case ERROR_NOT_READY: return error::kDiskNotReady;
    case ERROR_WRITE_PROTECT:
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION: return error::kPermissionDenied;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL: return error::kDiskFull;
    case ERROR_NOT_ENOUGH_MEMORY:
    case ERROR_OUTOFMEMORY: return error::kOutOfMemory;
    default: return error::kPathFileAccess;
    }
}

void raise(std::uint32_t win32Error, Attempt attempt) {
    throw base::RuntimeError(runtimeErrorNumber(win32Error, attempt));
}

void raiseLastError(Attempt attempt) {
    raise(GetLastError(), attempt);
}

} // namespace windows
