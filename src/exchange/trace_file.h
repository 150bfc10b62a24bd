// The control's trace, a text file in the data folder that users send to their supplier.
#pragma once

#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "ports/locale.h"

#include <string_view>

namespace exchange {

class TraceFile {
public:
    // None of the services is owned; they outlive the trace.
    struct Services {
        ports::FileSystem& files;
        ports::Clock& clock;
        ports::CodePage& ansi;
        ports::Locale& locale;
    };

    explicit TraceFile(const Services& services) : m_services(services) {}

    // Adds the line "date time,text" to quorvantis_sendreceive.txt in the data folder (with its final backslash);
    // `restart` begins the file anew. Without that folder nothing happens: a host turns all tracing off so. Raises what
    // writing raises; the caller decides whether a trace matters.
    void WriteSingleLog(std::string_view dataFolder, std::string_view text, bool restart) const;

private:
    Services m_services;
};

} // namespace exchange
