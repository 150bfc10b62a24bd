// A cabinet object with the least around it, on a library and files of the target's choice.
#pragma once

#include "base/runtime_error.h"
#include "cabinet/clsCABFile.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_system_info.h"
#include "fakes/one_file.h"
#include "host/diagnostic_log.h"

#include <cstdlib>
#include <memory>
#include <set>
#include <string>

namespace fuzz {

// Remembers the paths that were reported as extracted.
class ReportedPaths final : public cabinet::CabFileEvents {
public:
    void FileFound(const std::string&, const base::DateTime&, std::int32_t, const std::string&) override { ++found; }
    void BeforeExtract(const std::string&, bool&) override {}
    void AfterExtract(const std::string& path) override { paths.insert(path); }

    std::int32_t found = 0;
    std::set<std::string> paths;
};

class CabinetServices {
public:
    CabinetServices(ports::CabinetApi& api, ports::FileSystem& files)
        : cabinet(std::make_shared<cabinet::clsCABFile>(
              cabinet::clsCABFile::Services{api, m_callback, files, ansi, m_locale, m_log})) {
        cabinet->CabName = "C:\\x.cab";
        cabinet->setEvents(&events);
    }

    // True when nothing is raised. Whatever a cabinet holds, the error is the reader's own.
    template <typename Step>
    static bool succeeds(Step&& step) {
        try {
            step();
            return true;
        } catch (const base::RuntimeError& e) {
            if (e.source() != "CabFile") {
                std::abort();
            }
            return false;
        }
    }

    fakes::FakeCodePage ansi;
    ReportedPaths events;

private:
    fakes::OneFile m_logFile{""};
    fakes::FakeSettings m_settings;
    fakes::NoClock m_clock;
    fakes::FakeLocale m_locale;
    fakes::FakeSystemInfo m_system;
    host::DiagnosticLog m_log{{m_logFile, m_settings, m_clock, ansi, m_locale, m_system}};
    cabinet::modCallback m_callback;

public:
    std::shared_ptr<cabinet::clsCABFile> cabinet;
};

} // namespace fuzz
