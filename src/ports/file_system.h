// The port to the file system. Real: adapters/posix (native) and windows/adapters; in memory: tests/fakes.
// One contract suite (tests/contracts) proves them equal.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace ports {

struct FolderEntry {
    std::string name;
    std::string shortName; // the 8.3 name where the file has another one, else ""
    bool isFolder = false;
};

// False ends the listing.
using EntryVisitor = std::function<bool(const FolderEntry& entry)>;

// Paths are UTF-8 with backslashes and are used exactly as given: never normalised, a missing backslash never added.
// Methods raise base::RuntimeError with the numbers named below unless they say otherwise. Every method may also raise
// 7 (out of memory). Opening a file: not there 53, folder or network path not there 76, name not allowed 52, drive not
// ready 71, locked by another program or write-protected 70, anything else (access denied, read-only, a folder) 75.
class FileSystem {
public:
    FileSystem() = default;
    FileSystem(const FileSystem&) = delete;
    FileSystem& operator=(const FileSystem&) = delete;
    virtual ~FileSystem() = default;

    // True only for an existing file, never for a folder, an empty name or a name with wildcards. Any failure is false.
    [[nodiscard]] virtual bool fileExists(std::string_view path) = 0;

    // True only for an existing folder, with or without a trailing backslash. Any failure is false.
    [[nodiscard]] virtual bool folderExists(std::string_view path) = 0;

    // Makes one folder. 76: its parent is missing; 75: something of that name exists, or access is denied.
    virtual void createFolder(std::string_view path) = 0;

    // The whole file. Opens with shared reading and writing, so a reader never blocks another program's work. A sharing
    // violation is retried for half a second.
    [[nodiscard]] virtual std::string readFile(std::string_view path) = 0;

    // Replaces the file by `bytes` so that a process killed at any instant leaves the old file or the new one, whole:
    // writes `path` + ".tmp" beside it (one stray at most, reused by the next save), flushes it, moves it over the
    // target in one step. The target's access rights are kept where the system allows. When the folder refuses new
    // files but the target itself can be written, the bytes are written in place. A sharing violation is retried for
    // half a second. On failure the old file is untouched, the temporary one removed, and 70, 75, 76 or 61 raised.
    virtual void replaceFile(std::string_view path, std::string_view bytes) = 0;

    // Adds bytes to the end of the file, which is made when it is not there, with one write. A disk that fills up (61)
    // may keep the first part of them.
    virtual void appendFile(std::string_view path, std::string_view bytes) = 0;

    // The size in bytes. 53 when the file is not there; a folder raises 75.
    [[nodiscard]] virtual std::uint64_t fileSize(std::string_view path) = 0;

    // Moves or renames a file, never over an existing one (75).
    virtual void moveFile(std::string_view from, std::string_view to) = 0;

    // Moves a file over an existing one of the same volume, or to a new name, in one step: the target is the old file
    // or the new one. A sharing violation is retried for half a second. A folder or a read-only target raises 75; what
    // fails leaves both files as they were.
    virtual void moveOver(std::string_view from, std::string_view to) = 0;

    // Deletes a file. 53 when it is not there.
    virtual void removeFile(std::string_view path) = 0;

    // Copies a file over an existing one or to a new one. A copy that fails leaves no part of itself behind, and an
    // existing target as it was.
    virtual void copyFile(std::string_view from, std::string_view to) = 0;

    // Raises what opening the file for writing would raise, and changes nothing: an existing file keeps its bytes, a
    // missing one does not come into being.
    virtual void requireWritable(std::string_view path) = 0;

    // Visits the entries of a folder, without "." and "..", in the order in which the file system has them. `folder`
    // with or without a final backslash. 76: no such folder; 71: the drive is not ready.
    virtual void listFolder(std::string_view folder, const EntryVisitor& visit) = 0;

    // The drives that exist, "C:" and so on, in alphabetical order.
    [[nodiscard]] virtual std::vector<std::string> drives() = 0;

    // The current folder, without a final backslash unless it is a drive's root.
    [[nodiscard]] virtual std::string currentFolder() = 0;
};

} // namespace ports
