#include "exchange/trace_file.h"

#include "base/runtime_error.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_locale.h"

#include <gtest/gtest.h>

namespace exchange {
namespace {

class TraceFileTest : public testing::Test {
protected:
    fakes::FakeFileSystem files;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    fakes::FakeLocale locale;
    TraceFile trace{{files, clock, ansi, locale}};
    const std::string path = "C:\\data\\quorvantis_sendreceive.txt";
};

TEST_F(TraceFileTest, LinesAreAddedInTheCodePageUntilARestart) {
    files.addFolder("C:\\data");
    trace.WriteSingleLog("C:\\data\\", "caf\xC3\xA9 \xE4\xBA\xA7", false);
    clock.advance(std::chrono::seconds{1});
    trace.WriteSingleLog("C:\\data\\", "SendCommand\r\n<commands/>", false);
    EXPECT_EQ(files.contents(path), "11/15/2026 7:08:12 PM,caf\xE9 ?\r\n"
                                    "11/15/2026 7:08:13 PM,SendCommand\r\n<commands/>\r\n");
    trace.WriteSingleLog("C:\\data\\", "Start", true);
    EXPECT_EQ(files.contents(path), "11/15/2026 7:08:13 PM,Start\r\n");
}

TEST_F(TraceFileTest, WithoutTheFolderNothingIsTraced) {
    for (const char* const folder : {"C:\\gone\\", ""}) {
        trace.WriteSingleLog(folder, "line", true);
    }
    EXPECT_TRUE(files.files().empty());
    EXPECT_FALSE(files.folderExists("C:\\gone"));
}

TEST_F(TraceFileTest, AFileThatCannotBeWrittenRaises) {
    files.addFile(path, "old");
    files.lock(path);
    for (const bool restart : {false, true}) {
        EXPECT_THROW(trace.WriteSingleLog("C:\\data\\", "line", restart), base::RuntimeError);
    }
    EXPECT_EQ(files.contents(path), "old");
}

} // namespace
} // namespace exchange
