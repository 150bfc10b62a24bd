// The outside services that an exchange works with.
#pragma once

#include "cabinet/clsCABFile.h"
#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "ports/network.h"
#include "ports/programs.h"
#include "ports/settings.h"

#include <chrono>

namespace exchange {

// Not owned; they outlive the objects that are given them.
struct Services {
    ports::FileSystem& fileSystem;
    ports::Settings& settings;
    ports::Clock& clock;
    ports::CodePage& ansi;
    ports::Network& network;
    ports::Programs& programs;
    cabinet::clsCABFile::Services cabinets; // what a reader of cabinets works with
    // For connecting to the server, and for its silence after that.
    std::chrono::milliseconds timeOut{600'000};
};

} // namespace exchange
