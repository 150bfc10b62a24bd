// A file system in memory with Windows' path rules and scripted faults, proven by the same contract suite as the real
// ones (tests/contracts).
#pragma once

#include "ports/file_system.h"

#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace fakes {

// Paths are case-insensitive, either separator counts, doubled separators inside a path count once, "." and ".." are
// followed; a path without a drive starts at C:\. The drive C: always exists; no network path does.
class FakeFileSystem final : public ports::FileSystem {
public:
    // --- Setting the scene and looking at it; never recorded, never hit by a fault ---

    // Makes a folder or a file with the folders above it; an existing file gets the new bytes.
    void addFolder(std::string_view path);
    void addFile(std::string_view path, std::string_view bytes);
    // The bytes of a file. Throws std::logic_error when there is none: a test that looks must find.
    [[nodiscard]] std::string contents(std::string_view path) const;
    [[nodiscard]] bool hasFile(std::string_view path) const;
    // Full paths of all files, as they were first spelled, in case-insensitive order.
    [[nodiscard]] std::vector<std::string> files() const;

    // --- Faults; each lasts until it is taken back ---

    // Another program holds the file without sharing: every use of it raises 70.
    void lock(std::string_view path);
    void unlock(std::string_view path);
    // Marks an existing file or takes the mark off.
    void setReadOnly(std::string_view path, bool readOnly);
    // The folder takes no new files or folders (75); existing files can still be written.
    void denyCreation(std::string_view folder);
    void allowCreation(std::string_view folder);
    // The n-th write from now on, counted from 1, finds the disk full (61). The writes after it succeed again.
    void failWrite(int nth);

    // What was asked of the port, oldest first: "read C:\x", "replace C:\x", "append C:\x", "move C:\x -> C:\y",
    // "remove C:\x", "createFolder C:\x"; a call that failed has " !<error number>" after it. Questions about existence
    // are left out.
    [[nodiscard]] const std::vector<std::string>& operations() const { return m_operations; }
    void clearOperations() { m_operations.clear(); }

    bool fileExists(std::string_view path) override;
    bool folderExists(std::string_view path) override;
    void createFolder(std::string_view path) override;
    std::string readFile(std::string_view path) override;
    void replaceFile(std::string_view path, std::string_view bytes) override;
    void appendFile(std::string_view path, std::string_view bytes) override;
    std::uint64_t fileSize(std::string_view path) override;
    void moveFile(std::string_view from, std::string_view to) override;
    void moveOver(std::string_view from, std::string_view to) override;
    void removeFile(std::string_view path) override;
    void copyFile(std::string_view from, std::string_view to) override;
    void requireWritable(std::string_view path) override;
    void listFolder(std::string_view folder, const ports::EntryVisitor& visit) override;
    std::vector<std::string> drives() override;
    std::string currentFolder() override;

private:
    struct File {
        std::string spelling; // full path as it was first spelled
        std::string bytes;
        bool readOnly = false;
    };

    File& openFile(const std::string& key);
    void requireWritableTarget(std::string_view path) const;
    void rename(File& file, const std::string& source, const std::string& spelling);
    void requireParent(const std::string& key) const;
    void requireCreation(const std::string& key) const;
    void requireUnlocked(const std::string& key) const;
    template <typename Body>
    auto record(std::string operation, Body&& body);

    std::map<std::string, File> m_files; // by the path's upper-cased, tidied form
    std::set<std::string> m_folders{"C:"};
    std::set<std::string> m_locked;
    std::set<std::string> m_denied;
    int m_failingWrite = 0;
    std::vector<std::string> m_operations;
};

} // namespace fakes
