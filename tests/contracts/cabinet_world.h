// One cabinet library with the files that it works on.
#pragma once

#include "ports/cabinet_api.h"
#include "ports/code_page.h"
#include "ports/file_system.h"

#include <memory>
#include <string>

namespace contracts {

class CabinetWorld {
public:
    CabinetWorld() = default;
    CabinetWorld(const CabinetWorld&) = delete;
    CabinetWorld& operator=(const CabinetWorld&) = delete;
    virtual ~CabinetWorld() = default;

    virtual ports::CabinetApi& api() = 0;
    virtual ports::FileSystem& files() = 0;
    virtual ports::CodePage& ansi() = 0;
    // An empty folder with its final backslash, this test's own.
    virtual std::string folder() = 0;
    // The world's name of a file of tests/data.
    virtual std::string dataFile(const std::string& name) = 0;
    // Another program holds the file without sharing until the world ends; false where there is no such thing.
    virtual bool lock(const std::string& /*path*/) { return false; }
    // The file takes no byte, because its disk is full; false where a world cannot do that.
    virtual bool fillDiskFor(const std::string& /*path*/) { return false; }
};

// The real library of this target.
[[nodiscard]] std::unique_ptr<CabinetWorld> makeCabinetWorld();

} // namespace contracts
