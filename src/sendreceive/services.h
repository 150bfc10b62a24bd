// What the send/receive side works with.
#pragma once

#include "login/frmLogin.h"
#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "ports/locale.h"
#include "ports/picture_decoder.h"
#include "ports/settings.h"
#include "ui/desktop.h"

namespace sendreceive {

// Not owned; outlive the objects that are given them.
struct Services {
    ui::Desktop& desktop;
    ports::FileSystem& fileSystem;
    ports::Settings& settings;
    ports::Clock& clock;
    ports::CodePage& ansi;
    ports::Locale& locale;
    ports::PictureDecoder& pictures;
    login::frmLogin& login;
};

} // namespace sendreceive
