// The file system port on a POSIX system, for the native tests and benchmarks.
#pragma once

#include "ports/file_system.h"

#include <filesystem>

namespace adapters {

// A folder of this machine stands for every drive: C:\a\b is <root>/a/b. Names keep their case; file locks of other
// programs do not exist here, so a sharing violation never happens.
class PosixFileSystem final : public ports::FileSystem {
public:
    explicit PosixFileSystem(std::filesystem::path root);

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
    [[nodiscard]] std::vector<std::string> drives() override;
    [[nodiscard]] std::string currentFolder() override;

private:
    [[nodiscard]] std::string native(std::string_view path) const;

    std::filesystem::path m_root;
};

} // namespace adapters
