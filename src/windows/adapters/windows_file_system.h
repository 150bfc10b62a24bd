// The file system of Windows.
#pragma once

#include "ports/file_system.h"
#include "windows/base/retry.h"

namespace windows {

// Paths longer than the system's ordinary limit work. The read-only attribute is looked at here and raises 75, because
// an administrator's process on some systems may write such a file all the same.
class WindowsFileSystem final : public ports::FileSystem {
public:
    WindowsFileSystem();
    explicit WindowsFileSystem(Pause pause);

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
    Pause m_pause;
};

} // namespace windows
