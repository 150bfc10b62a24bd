// The least that a link document needs around it: one file, no time, western text. For benchmarks and fuzz targets,
// where every other cost would show.
#pragma once

#include "ports/clock.h"
#include "ports/file_system.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace fakes {

// Every name is this file; what is written goes nowhere.
class OneFile final : public ports::FileSystem {
public:
    explicit OneFile(std::string bytes) : m_bytes(std::move(bytes)) {}
    bool fileExists(std::string_view) override { return true; }
    bool folderExists(std::string_view) override { return true; }
    void createFolder(std::string_view) override {}
    std::string readFile(std::string_view) override { return m_bytes; }
    void replaceFile(std::string_view, std::string_view) override {}
    void appendFile(std::string_view, std::string_view) override {}
    std::uint64_t fileSize(std::string_view) override { return m_bytes.size(); }
    void moveFile(std::string_view, std::string_view) override {}
    void moveOver(std::string_view, std::string_view) override {}
    void removeFile(std::string_view) override {}
    void copyFile(std::string_view, std::string_view) override {}
    void requireWritable(std::string_view) override {}
    void listFolder(std::string_view, const ports::EntryVisitor&) override {}
    std::vector<std::string> drives() override { return {}; }
    std::string currentFolder() override { return {}; }

private:
    std::string m_bytes;
};

class NoClock final : public ports::Clock {
public:
    base::DateTime now() override { return {}; }
};

} // namespace fakes
