// What every file system behind the port must do. A world is one implementation with the means to set scenes that the
// port itself cannot: locks, read-only marks, a full disk.
#pragma once

#include "ports/file_system.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace contracts {

class FileSystemWorld {
public:
    FileSystemWorld() = default;
    FileSystemWorld(const FileSystemWorld&) = delete;
    FileSystemWorld& operator=(const FileSystemWorld&) = delete;
    virtual ~FileSystemWorld() = default;

    virtual ports::FileSystem& files() = 0;
    // An empty folder with its final backslash, this test's own.
    virtual std::string folder() = 0;

    virtual void setReadOnly(const std::string& path, bool readOnly) = 0;

    // The rest may be beyond a world: it then returns false, and the test that needs it is skipped.
    virtual bool isWindowsLike() { return true; }                           // ignores case, forbids some names
    virtual bool lock(const std::string& /*path*/) { return false; }        // another program holds the file, unshared
    virtual void unlock(const std::string& /*path*/) {}                     //
    virtual bool fillDiskFor(const std::string& /*path*/) { return false; } // the next save of it finds no room
    virtual void freeDiskFor(const std::string& /*path*/) {}
    virtual bool denyCreation(const std::string& /*folder*/) { return false; }
    virtual void allowCreation(const std::string& /*folder*/) {}
};

using WorldFactory = std::function<std::unique_ptr<FileSystemWorld>()>;

class FileSystemContract : public testing::TestWithParam<WorldFactory> {
protected:
    FileSystemContract() : m_world(GetParam()()), m_folder(m_world->folder()) {}

    FileSystemWorld& world() { return *m_world; }
    ports::FileSystem& files() { return m_world->files(); }
    [[nodiscard]] std::string in(const std::string& name) const { return m_folder + name; }

    [[nodiscard]] static std::string everyByte() {
        std::string bytes;
        for (int i = 0; i < 256; ++i) {
            bytes.push_back(static_cast<char>(static_cast<unsigned char>(i)));
        }
        return bytes;
    }
    // Every failed save must leave the old bytes and no temporary file.
    void expectUntouched(const std::string& path, const std::string& bytes) {
        EXPECT_EQ(files().readFile(path), bytes);
        EXPECT_FALSE(files().fileExists(path + ".tmp"));
    }

private:
    std::unique_ptr<FileSystemWorld> m_world;
    std::string m_folder;
};

} // namespace contracts
