// The diagnostic trace: when it starts afresh, and its lines byte for byte.
#include "host/diagnostic_log.h"

#include "base/error_number.h"
#include "base/runtime_error.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_system_info.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <vector>

namespace {

class DiagnosticLogTest : public testing::Test {
protected:
    DiagnosticLogTest() { clock.set({2026, 1, 5, 8, 7, 6}); }

    [[nodiscard]] std::string text() const { return fileSystem.contents("C:\\QuorvantisLog.txt"); }

    fakes::FakeFileSystem fileSystem;
    fakes::FakeSettings settings;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    fakes::FakeLocale locale;
    fakes::FakeSystemInfo system;
    host::DiagnosticLog log{{fileSystem, settings, clock, ansi, locale, system}};
};

TEST_F(DiagnosticLogTest, EntriesAreAppendedAndARestartLeavesHeaderAndEntry) {
    log.WriteLog("clsCABFile:Extract, SetupIterateCabinet", false, false);
    log.WriteLog("caf\xC3\xA9, \xE4\xBA\xA7,", false, true); // without restart the counter is left alone
    EXPECT_EQ(text(), "08:07:06,clsCABFile:Extract, SetupIterateCabinet,734003200\r\n"
                      "08:07:06,caf\xE9, ?,,734003200\r\n");

    clock.set({2026, 11, 15, 18, 57, 26});
    system.memory = {-524'289, -1}; // larger than 31 bits: read as signed
    log.WriteLog("", true, false);
    EXPECT_EQ(text(), "15 Nov 2026, 18:57:26\r\n18:57:26,,-524288\r\n");
    EXPECT_EQ(settings.all(), std::vector<std::string>{});
}

TEST_F(DiagnosticLogTest, WithTheCounterEvery50thCallStartsAfreshAndTheFirstRoundIsOneLonger) {
    std::vector<int> restarts;
    for (int call = 1; call <= 151; ++call) {
        log.WriteLog("x", true, true);
        if (text().starts_with("05 Jan 2026, 08:07:06\r\n08:07:06,x,734003200\r\n") && text().size() < 60) {
            restarts.push_back(call);
            EXPECT_EQ(settings.get("QUORVANTIS", "log", "counter"), "X");
        }
    }
    EXPECT_EQ(restarts, (std::vector<int>{51, 101, 151}));

    settings.set("QuorVantis", "Log", "Counter", std::string(49, '-')); // only the length counts
    log.WriteLog("y", true, true);
    EXPECT_EQ(settings.get("QuorVantis", "Log", "Counter"), "X" + std::string(49, '-'));
    log.WriteLog("z", true, true);
    EXPECT_EQ(text(), "05 Jan 2026, 08:07:06\r\n08:07:06,z,734003200\r\n");
}

TEST_F(DiagnosticLogTest, FailuresReachTheCaller) {
    const auto errorOf = [&] { return base::errorNumber([&] { log.WriteLog("x", true, true); }); };
    system.memory = {std::numeric_limits<std::int32_t>::max(), -1};
    EXPECT_EQ(errorOf(), base::error::kOverflow);
    EXPECT_EQ(settings.all(), std::vector<std::string>{}); // nothing was touched yet
    system.memory = {std::numeric_limits<std::int32_t>::min(), 1};
    EXPECT_EQ(errorOf(), base::error::kOverflow);

    system.memory = {};
    fileSystem.addFile("C:\\QuorvantisLog.txt", "old");
    fileSystem.lock("C:\\QuorvantisLog.txt");
    EXPECT_EQ(errorOf(), base::error::kPermissionDenied);
    fileSystem.unlock("C:\\QuorvantisLog.txt");
    settings.failWrites(base::error::kPathFileAccess);
    EXPECT_EQ(errorOf(), base::error::kPathFileAccess);
    EXPECT_EQ(text(), "old");
}

} // namespace
