#include "adapters/mspack/mspack_system.h"

#include "adapters/posix/posix_error.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <new>

#include <fcntl.h>
#include <unistd.h>

namespace adapters {
namespace {

constexpr std::uint32_t kFileNotFound = 2;
constexpr std::uint32_t kPathNotFound = 3;
constexpr std::uint32_t kAccessDenied = 5;
constexpr std::uint32_t kNotEnoughMemory = 8;
constexpr std::uint32_t kWriteProtected = 19;
constexpr std::uint32_t kWriteFault = 29;
constexpr std::uint32_t kReadFault = 30;
constexpr std::uint32_t kNameTooLong = 111;
constexpr std::uint32_t kDiskFull = 112;

// What Windows would say. A file to be written that is "not there" lacks its folder.
std::uint32_t win32Error(int code, bool writing) noexcept {
    switch (code) {
    case ENOENT: return writing ? kPathNotFound : kFileNotFound;
    case ENOTDIR: return kPathNotFound;
    case EACCES:
    case EPERM:
    case EISDIR: return kAccessDenied;
    case ENOMEM: return kNotEnoughMemory;
    case EROFS: return kWriteProtected;
    case ENAMETOOLONG: return kNameTooLong;
    case ENOSPC:
    case EDQUOT: return kDiskFull;
    default: return writing ? kWriteFault : kReadFault;
    }
}

void ignoreMessage(mspack_file* /*file*/, const char* /*format*/, ...) {}

void* allocate(mspack_system* /*table*/, std::size_t bytes) {
    return std::malloc(bytes);
}

void copyBytes(void* source, void* target, std::size_t bytes) {
    std::memcpy(target, source, bytes);
}

} // namespace

struct MspackSystem::File {
    MspackSystem& owner;
    UniqueFd descriptor;

    static File& of(mspack_file* file) noexcept { return *reinterpret_cast<File*>(file); }

    int failed(bool writing) const noexcept {
        owner.m_lastError = win32Error(errno, writing);
        return -1;
    }
};

MspackSystem::MspackSystem() noexcept
    : m_table{{open, close, read, write, seek, tell, ignoreMessage, allocate, std::free, copyBytes, nullptr}, this} {}

mspack_file* MspackSystem::open(mspack_system* table, const char* path, int mode) {
    MspackSystem& self = *static_cast<Table*>(table)->owner;
    const bool writing = mode != MSPACK_SYS_OPEN_READ;
    UniqueFd descriptor(::open(path, (writing ? O_WRONLY | O_CREAT | O_TRUNC : O_RDONLY) | O_CLOEXEC, 0666));
    if (!descriptor) {
        self.m_lastError = win32Error(errno, writing);
        return nullptr;
    }
    return reinterpret_cast<mspack_file*>(new (std::nothrow) File{self, std::move(descriptor)});
}

void MspackSystem::close(mspack_file* file) {
    delete &File::of(file);
}

int MspackSystem::read(mspack_file* file, void* buffer, int bytes) {
    const File& self = File::of(file);
    const ssize_t count = ::read(self.descriptor.get(), buffer, static_cast<std::size_t>(bytes));
    return count < 0 ? self.failed(false) : static_cast<int>(count);
}

int MspackSystem::write(mspack_file* file, void* buffer, int bytes) {
    const File& self = File::of(file);
    const ssize_t count = ::write(self.descriptor.get(), buffer, static_cast<std::size_t>(bytes));
    if (count >= 0 && count < bytes) {
        errno = ENOSPC; // a file system takes a part only when it has no room for the rest
    }
    return count < bytes ? self.failed(true) : bytes;
}

int MspackSystem::seek(mspack_file* file, off_t offset, int origin) {
    const int whence = origin == MSPACK_SYS_SEEK_START ? SEEK_SET : origin == MSPACK_SYS_SEEK_CUR ? SEEK_CUR : SEEK_END;
    return ::lseek(File::of(file).descriptor.get(), offset, whence) < 0 ? -1 : 0;
}

off_t MspackSystem::tell(mspack_file* file) {
    return ::lseek(File::of(file).descriptor.get(), 0, SEEK_CUR);
}

} // namespace adapters
