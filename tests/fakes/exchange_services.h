// Everything that an exchange works with, in memory.
#pragma once

#include "exchange/services.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_network.h"
#include "fakes/fake_programs.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_system_info.h"
#include "fakes/scripted_cabinet_api.h"

namespace fakes {

struct ExchangeServices {
    FakeFileSystem files;
    FakeSettings settings;
    FakeClock clock;
    FakeCodePage ansi;
    FakeLocale locale;
    FakeNetwork network;
    FakePrograms programs;
    ScriptedCabinetApi cabinetApi;
    FakeSystemInfo system;
    host::DiagnosticLog log{{files, settings, clock, ansi, locale, system}};
    cabinet::modCallback cabinetCallback;
    exchange::Services engine{
        files, settings, clock, ansi, network, programs, {cabinetApi, cabinetCallback, files, ansi, locale, log}};
};

} // namespace fakes
