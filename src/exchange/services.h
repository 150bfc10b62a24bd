// What the send/receive side works with.
#pragma once

#include "cabinet/clsCABFile.h"
#include "login/frmLogin.h"
#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "ports/locale.h"
#include "ports/network.h"
#include "ports/picture_decoder.h"
#include "ports/programs.h"
#include "ports/settings.h"
#include "ui/desktop.h"

#include <chrono>
#include <string>

namespace exchange {

// The services are not owned and outlive the objects that are given them.
struct Services {
    ui::Desktop& desktop;
    ports::FileSystem& fileSystem;
    ports::Settings& settings;
    ports::Clock& clock;
    ports::CodePage& ansi;
    ports::Locale& locale;
    ports::PictureDecoder& pictures;
    login::frmLogin& login;
    ports::Network& network;
    ports::Programs& programs;
    cabinet::clsCABFile::Services cabinets; // what a reader of cabinets works with
    std::string componentFolder;            // where the component's own files are; without a final backslash
    // For connecting to the server, and for its silence after that.
    std::chrono::milliseconds timeOut{600'000};
};

} // namespace exchange
