// What the send/receive control and its dialogues work with.
#pragma once

#include "exchange/services.h"
#include "login/frmLogin.h"
#include "ports/locale.h"
#include "ports/picture_decoder.h"
#include "ui/desktop.h"

#include <string>

namespace sendreceive {

// Not owned; they outlive the objects that are given them.
struct Services {
    exchange::Services engine;
    ui::Desktop& desktop;
    ports::Locale& locale;
    ports::PictureDecoder& pictures;
    login::frmLogin& login;
    std::string componentFolder; // where the component's own files are; without a final backslash
};

} // namespace sendreceive
