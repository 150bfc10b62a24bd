// What every Programs must do with a program that somebody trusted has signed, and with one that nobody has.
#pragma once

#include "ports/programs.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>

namespace contracts {

class ProgramsWorld {
public:
    ProgramsWorld() = default;
    ProgramsWorld(const ProgramsWorld&) = delete;
    ProgramsWorld& operator=(const ProgramsWorld&) = delete;
    virtual ~ProgramsWorld() = default;

    virtual ports::Programs& programs() = 0;
    // In one folder: "good.exe", version 7.2.0.1, signed by "Test Publisher", whom this user trusts; "unsigned.exe",
    // the same without; "text.exe", no program at all. No other file is there.
    virtual std::string path(const std::string& name) = 0;
    // Waits until it was.
    virtual bool wasStarted(const std::string& path) = 0;
};

class ProgramsContract : public testing::TestWithParam<std::function<std::unique_ptr<ProgramsWorld>()>> {
protected:
    ProgramsContract() : m_world(GetParam()()) {}

    ProgramsWorld& world() { return *m_world; }
    ports::Programs& programs() { return m_world->programs(); }
    std::string path(const std::string& name) { return m_world->path(name); }

private:
    std::unique_ptr<ProgramsWorld> m_world;
};

} // namespace contracts
