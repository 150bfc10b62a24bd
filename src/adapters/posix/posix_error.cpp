#include "adapters/posix/posix_error.h"

#include "base/runtime_error.h"

#include <cerrno>

namespace adapters {

namespace error = base::error;

void raiseErrno() {
    switch (errno) {
    case ENOENT: throw base::RuntimeError(error::kFileNotFound);
    case ENOTDIR: throw base::RuntimeError(error::kPathNotFound);
    case EROFS: throw base::RuntimeError(error::kPermissionDenied);
    case ENOSPC:
    case EDQUOT: throw base::RuntimeError(error::kDiskFull);
    case ENOMEM: throw base::RuntimeError(error::kOutOfMemory);
    default: throw base::RuntimeError(error::kPathFileAccess);
    }
}

} // namespace adapters
