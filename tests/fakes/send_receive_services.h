// Everything that a send/receive control works with, in memory.
#pragma once

#include "exchange/services.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_data_protection.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_network.h"
#include "fakes/fake_picture_decoder.h"
#include "fakes/fake_programs.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_system_info.h"
#include "fakes/scripted_cabinet_api.h"

namespace fakes {

// `Desktop` is a fake or a real one.
template <typename Desktop>
struct SendReceiveServicesOn {
    template <typename... Arguments>
    explicit SendReceiveServicesOn(Arguments... arguments) : desktop(arguments...) {}

    Desktop desktop;
    FakeFileSystem files;
    FakeSettings settings;
    FakeClock clock;
    FakeCodePage ansi;
    FakeLocale locale;
    FakePictureDecoder pictures;
    FakeDataProtection protection;
    FakeNetwork network;
    FakePrograms programs;
    ScriptedCabinetApi cabinetApi;
    FakeSystemInfo system;
    host::DiagnosticLog log{{files, settings, clock, ansi, locale, system}};
    cabinet::modCallback cabinetCallback;
    login::frmLogin login{{desktop, settings, protection, clock}};
    exchange::Services all{desktop,
                           files,
                           settings,
                           clock,
                           ansi,
                           locale,
                           pictures,
                           login,
                           network,
                           programs,
                           {cabinetApi, cabinetCallback, files, ansi, locale, log},
                           "C:\\Program Files\\QuorvantisImage"};
};

using SendReceiveServices = SendReceiveServicesOn<FakeDesktop>;

} // namespace fakes
