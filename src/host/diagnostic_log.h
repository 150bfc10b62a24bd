// The component-wide diagnostic trace, a text file in the root of drive C. WriteLog is the procedure of that name of
// the module QVI_global.
#pragma once

#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "ports/locale.h"
#include "ports/settings.h"
#include "ports/system_info.h"

#include <string>
#include <string_view>

namespace host {

class DiagnosticLog {
public:
    // None of the services is owned; they outlive the log.
    struct Services {
        ports::FileSystem& files;
        ports::Settings& settings;
        ports::Clock& clock;
        ports::CodePage& ansi;
        ports::Locale& locale;
        ports::SystemInfo& system;
    };

    explicit DiagnosticLog(const Services& services) : m_services(services) {}

    // Appends the line "time,message,committed page file". `restart` starts the file afresh with the date in front of
    // it; with `useCounter` only every 50th such call does, counted in the user's settings. The file is closed again
    // when the call returns. Raises 6 when the committed page file leaves 32 bits, and what writing the file or the
    // counter raises: the caller decides whether a trace matters.
    void WriteLog(std::string_view message, bool restart, bool useCounter);

private:
    [[nodiscard]] bool countCall();

    Services m_services;
};

} // namespace host
