#include "adapters/posix/crash_safe_save.h"

#include "adapters/posix/posix_error.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace adapters {
namespace {

void writeAll(int file, std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t count = ::write(file, bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            raiseErrno();
        }
        bytes.remove_prefix(count > 0 ? static_cast<std::size_t>(count) : 0);
    }
}

void flush(int file) {
    if (::fsync(file) != 0 && errno != EINVAL) { // EINVAL: not a disk file, nothing to flush
        raiseErrno();
    }
}

void writeInPlace(const std::string& name, std::string_view bytes) {
    const UniqueFd file(::open(name.c_str(), O_WRONLY | O_CLOEXEC));
    if (!file) {
        raiseErrno();
    }
    writeAll(file.get(), bytes);
    if (::ftruncate(file.get(), static_cast<off_t>(bytes.size())) != 0) {
        raiseErrno();
    }
    flush(file.get());
}

// Removes the temporary file unless it has been moved.
struct RemoveUnlessMoved {
    const std::string& name;
    bool moved = false;
    ~RemoveUnlessMoved() {
        if (!moved) {
            ::unlink(name.c_str());
        }
    }
};

} // namespace

void crashSafeSave(const std::string& name, std::string_view bytes) {
    const std::string temporary = name + ".tmp";
    UniqueFd file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666));
    const int failure = errno;
    struct stat target {};
    const bool replaces = ::stat(name.c_str(), &target) == 0;
    if (!file && failure == EACCES && replaces && ::access(temporary.c_str(), F_OK) != 0) {
        writeInPlace(name, bytes);
        return;
    }
    if (!file) {
        errno = failure;
        raiseErrno();
    }
    RemoveUnlessMoved guard{temporary};
    if (replaces) {
        ::fchmod(file.get(), target.st_mode & 07777U);
    }
    writeAll(file.get(), bytes);
    flush(file.get());
    file.reset();
    if (std::rename(temporary.c_str(), name.c_str()) != 0) {
        raiseErrno();
    }
    // The folder itself is not flushed: after a power cut the old document may be there, whole. A second wait for the
    // disk would cost as much as the first.
    guard.moved = true;
}

} // namespace adapters
