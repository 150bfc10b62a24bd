#include "adapters/posix/posix_file_system.h"

#include "adapters/posix/crash_safe_save.h"
#include "adapters/posix/native_name.h"
#include "adapters/posix/posix_error.h"
#include "base/runtime_error.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace adapters {
namespace {

using base::RuntimeError;
namespace error = base::error;

bool modeOf(const std::string& name, mode_t& mode) {
    struct stat info {};
    const bool found = ::stat(name.c_str(), &info) == 0;
    mode = found ? info.st_mode : 0;
    return found;
}

// Folders and read-only files raise 75 before anything is opened: root could open the latter.
void refuseFolderOrReadOnly(const std::string& name) {
    mode_t mode = 0;
    if (modeOf(name, mode) && (S_ISDIR(mode) || (mode & S_IWUSR) == 0)) {
        throw RuntimeError(error::kPathFileAccess);
    }
}

void requireParent(const std::string& name) {
    mode_t mode = 0;
    if (!modeOf(name.substr(0, name.find_last_of('/')), mode) || !S_ISDIR(mode)) {
        throw RuntimeError(error::kPathNotFound);
    }
}

void requireFile(const std::string& name) {
    mode_t mode = 0;
    requireParent(name);
    if (!modeOf(name, mode)) {
        throw RuntimeError(error::kFileNotFound);
    }
    if (S_ISDIR(mode)) {
        throw RuntimeError(error::kPathFileAccess);
    }
}

void rename(const std::string& source, const std::string& target) {
    requireFile(source);
    requireParent(target);
    if (std::rename(source.c_str(), target.c_str()) != 0) {
        raiseErrno();
    }
}

bool namesOneThing(std::string_view path) {
    return !path.empty() && path.find_first_of(std::string_view("*?\0", 3)) == path.npos;
}

} // namespace

PosixFileSystem::PosixFileSystem(std::filesystem::path root) : m_root(std::move(root)) {}

bool PosixFileSystem::fileExists(std::string_view path) {
    mode_t mode = 0;
    return namesOneThing(path) && path.back() != '\\' && path.back() != '/' && modeOf(native(path), mode) &&
           !S_ISDIR(mode);
}

bool PosixFileSystem::folderExists(std::string_view path) {
    mode_t mode = 0;
    return namesOneThing(path) && modeOf(native(path), mode) && S_ISDIR(mode);
}

void PosixFileSystem::createFolder(std::string_view path) {
    std::string name = native(path);
    while (name.ends_with('/')) {
        name.pop_back();
    }
    requireParent(name);
    if (::mkdir(name.c_str(), 0777) != 0) {
        raiseErrno();
    }
}

std::string PosixFileSystem::readFile(std::string_view path) {
    const std::string name = native(path);
    requireParent(name);
    mode_t mode = 0;
    if (modeOf(name, mode) && S_ISDIR(mode)) {
        throw RuntimeError(error::kPathFileAccess);
    }
    const UniqueFd file(::open(name.c_str(), O_RDONLY | O_CLOEXEC));
    if (!file) {
        raiseErrno();
    }
    struct stat info {};
    ::fstat(file.get(), &info);
    std::string bytes;
    for (std::size_t filled = 0;;) {
        bytes.resize(std::max(filled + 4096, static_cast<std::size_t>(info.st_size) + 1));
        const ssize_t count = ::read(file.get(), bytes.data() + filled, bytes.size() - filled);
        if (count < 0 && errno != EINTR) {
            raiseErrno();
        }
        filled += static_cast<std::size_t>(std::max<ssize_t>(count, 0));
        if (count == 0) {
            bytes.resize(filled);
            return bytes;
        }
    }
}

void PosixFileSystem::replaceFile(std::string_view path, std::string_view bytes) {
    const std::string name = native(path);
    requireParent(name);
    refuseFolderOrReadOnly(name);
    crashSafeSave(name, bytes);
}

void PosixFileSystem::appendFile(std::string_view path, std::string_view bytes) {
    const std::string name = native(path);
    requireParent(name);
    refuseFolderOrReadOnly(name);
    const UniqueFd file(::open(name.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC, 0666));
    if (!file) {
        raiseErrno();
    }
    while (!bytes.empty()) {
        const ssize_t count = ::write(file.get(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR) {
            raiseErrno();
        }
        bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    }
}

std::uint64_t PosixFileSystem::fileSize(std::string_view path) {
    const std::string name = native(path);
    requireParent(name);
    struct stat info {};
    if (::stat(name.c_str(), &info) != 0) {
        raiseErrno();
    }
    if (S_ISDIR(info.st_mode)) {
        throw RuntimeError(error::kPathFileAccess);
    }
    return static_cast<std::uint64_t>(info.st_size);
}

void PosixFileSystem::moveFile(std::string_view from, std::string_view to) {
    const std::string source = native(from);
    const std::string target = native(to);
    mode_t mode = 0;
    if (source != target && modeOf(target, mode)) {
        requireFile(source);
        throw RuntimeError(error::kPathFileAccess);
    }
    rename(source, target);
}

void PosixFileSystem::moveOver(std::string_view from, std::string_view to) {
    const std::string target = native(to);
    refuseFolderOrReadOnly(target);
    rename(native(from), target);
}

void PosixFileSystem::removeFile(std::string_view path) {
    const std::string name = native(path);
    requireParent(name);
    refuseFolderOrReadOnly(name);
    if (::unlink(name.c_str()) != 0) {
        raiseErrno();
    }
}

void PosixFileSystem::copyFile(std::string_view from, std::string_view to) {
    replaceFile(to, readFile(from));
}

void PosixFileSystem::requireWritable(std::string_view path) {
    const std::string name = native(path);
    requireParent(name);
    refuseFolderOrReadOnly(name);
    mode_t mode = 0;
    const bool isNew = !modeOf(name, mode);
    const UniqueFd file(::open(name.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0666));
    if (!file) {
        raiseErrno();
    }
    if (isNew) {
        ::unlink(name.c_str());
    }
}

void PosixFileSystem::listFolder(std::string_view folder, const ports::EntryVisitor& visit) {
    const std::string name = native(folder);
    mode_t mode = 0;
    if (!modeOf(name, mode) || !S_ISDIR(mode)) {
        throw RuntimeError(error::kPathNotFound);
    }
    std::error_code failure;
    for (const auto& entry : std::filesystem::directory_iterator(name, failure)) {
        const std::string& path = entry.path().native();
        if (!visit({path.substr(path.rfind('/') + 1), {}, entry.is_directory(failure)})) {
            return;
        }
    }
    if (failure) {
        throw RuntimeError(error::kPathFileAccess);
    }
}

std::vector<std::string> PosixFileSystem::drives() {
    return {"C:"};
}

std::string PosixFileSystem::currentFolder() {
    return "C:\\";
}

std::string PosixFileSystem::native(std::string_view path) const {
    return nativeName(m_root, path);
}

} // namespace adapters
