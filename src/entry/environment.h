// What the entry objects work with: the outside services, and the one form variable that lives between calls.
#pragma once

#include "cabinet/modCallback.h"
#include "host/diagnostic_log.h"
#include "images/frmQVI_Images.h"
#include "login/frmLogin.h"
#include "ports/cabinet_api.h"
#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/data_protection.h"
#include "ports/file_system.h"
#include "ports/locale.h"
#include "ports/network.h"
#include "ports/picture_decoder.h"
#include "ports/programs.h"
#include "ports/settings.h"
#include "ports/system_info.h"
#include "ui/desktop.h"

#include <atomic>
#include <memory>
#include <string>

namespace entry {

// One per process, made by the composition root. The services are not owned and outlive it.
struct Environment {
    ui::Desktop& desktop;
    ports::FileSystem& fileSystem;
    ports::Settings& settings;
    ports::Clock& clock;
    ports::PictureDecoder& pictures;
    ports::CodePage& ansi;
    ports::Locale& locale;
    ports::DataProtection& protection;
    ports::Network& network;
    ports::Programs& programs;
    ports::CabinetApi& cabinetApi;
    ports::SystemInfo& system;
    std::string componentFolder; // the component's own files are here; without a final backslash

    // The current image manager form with the host's values in its variables. All clsQVI_Link objects share it: it is
    // filled by either Show method, and released only at the end of ShowForm.
    std::shared_ptr<images::frmQVI_Images> imageManager = nullptr;

    host::DiagnosticLog log{{fileSystem, settings, clock, ansi, locale, system}};

    // The one callback that the cabinet library knows.
    cabinet::modCallback cabinetCallback = {};

    // The one login form of the process: what the user entered lives on from run to run.
    login::frmLogin login{{desktop, settings, protection, clock}};

    // Set while a Show method runs, on whatever thread.
    std::atomic_flag showing = {};
};

} // namespace entry
