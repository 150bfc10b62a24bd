// A cabinet object on a cabinet library and files of the test's choice, with its log in memory.
#pragma once

#include "base/runtime_error.h"
#include "cabinet/clsCABFile.h"
#include "cabinet/recorded_events.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_system_info.h"
#include "host/diagnostic_log.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace cabinet_test {

using Lines = std::vector<std::string>;

class CabinetFixture {
public:
    CabinetFixture(ports::CabinetApi& api, ports::FileSystem& files, ports::CodePage& ansi)
        : m_services{api, callback, files, ansi, m_locale, m_log}, cabinet(make()) {
        cabinet->setEvents(&events);
    }

    [[nodiscard]] std::shared_ptr<cabinet::clsCABFile> make() const {
        return std::make_shared<cabinet::clsCABFile>(m_services);
    }

    // "number|source|description", or "" when nothing is raised.
    template <typename Step>
    static std::string errorOf(Step&& step) {
        try {
            static_cast<void>(step());
            return {};
        } catch (const base::RuntimeError& e) {
            return std::to_string(e.number()) + "|" + e.source() + "|" + e.description();
        }
    }

    [[nodiscard]] std::string log() const { return logFiles.contents("C:\\QuorvantisLog.txt"); }

    fakes::FakeFileSystem logFiles;
    RecordedEvents events;
    cabinet::modCallback callback;

private:
    fakes::FakeSettings m_settings;
    fakes::FakeClock m_clock;
    fakes::FakeCodePage m_ansi;
    fakes::FakeLocale m_locale;
    fakes::FakeSystemInfo m_system;
    host::DiagnosticLog m_log{{logFiles, m_settings, m_clock, m_ansi, m_locale, m_system}};
    cabinet::clsCABFile::Services m_services;

public:
    std::shared_ptr<cabinet::clsCABFile> cabinet;
};

} // namespace cabinet_test
