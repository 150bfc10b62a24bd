// The reader's own rules against those of the system, and its trace in the root of the real drive C.
#include "cabinet/dos_time.h"
#include "host/diagnostic_log.h"
#include "windows/adapters/ansi_code_page.h"
#include "windows/adapters/local_clock.h"
#include "windows/adapters/memory_status.h"
#include "windows/adapters/registry_settings.h"
#include "windows/adapters/user_locale.h"
#include "windows/adapters/windows_file_system.h"

#include <gmock/gmock.h>

#include <windows.h>

namespace {

base::DateTime asTheSystemConverts(WORD date, WORD time) {
    FILETIME fileTime{};
    SYSTEMTIME fields{};
    if (!DosDateTimeToFileTime(date, time, &fileTime) || !FileTimeToSystemTime(&fileTime, &fields)) {
        return {};
    }
    return {fields.wYear, fields.wMonth, fields.wDay, fields.wHour, fields.wMinute, fields.wSecond};
}

// Of what is no date, such as 29 February 1981, some systems make the next one: those are left out.
TEST(DosTime, EveryDateAndEveryTimeIsWhatTheSystemMakesOfIt) {
    const auto same = [](unsigned date, unsigned time) {
        const auto word = [](unsigned value) { return static_cast<WORD>(value); };
        const base::DateTime ours = cabinet::fromDosTime(word(date), word(time));
        if (ours.year == base::DateTime{}.year) {
            return true;
        }
        const base::DateTime theirs = asTheSystemConverts(word(date), word(time));
        return ours.year == theirs.year && ours.month == theirs.month && ours.day == theirs.day &&
               ours.hour == theirs.hour && ours.minute == theirs.minute && ours.second == theirs.second;
    };
    for (unsigned value = 0; value <= 0xFFFF; ++value) {
        ASSERT_TRUE(same(value, 0x9906)) << "date " << value;
        ASSERT_TRUE(same(0x5D6F, value)) << "time " << value;
    }
}

TEST(DiagnosticLog, LandsInTheRootOfTheDriveWithTheSystemsFigures) {
    windows::WindowsFileSystem files;
    windows::RegistrySettings settings;
    windows::LocalClock clock;
    windows::AnsiCodePage ansi;
    windows::UserLocale locale;
    windows::MemoryStatus memory;
    host::DiagnosticLog log({files, settings, clock, ansi, locale, memory});
    log.WriteLog("first", true, false);
    log.WriteLog("second", false, false);
    EXPECT_THAT(files.readFile("C:\\QuorvantisLog.txt"),
                testing::MatchesRegex("\\d\\d \\w+ \\d\\d\\d\\d, \\d\\d:\\d\\d:\\d\\d\r\n"
                                      "\\d\\d:\\d\\d:\\d\\d,first,-?\\d+\r\n"
                                      "\\d\\d:\\d\\d:\\d\\d,second,-?\\d+\r\n"));
    files.removeFile("C:\\QuorvantisLog.txt");
}

} // namespace
