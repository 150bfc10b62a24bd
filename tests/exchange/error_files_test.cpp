#include "exchange/error_files.h"

#include "fakes/fake_clock.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_file_system.h"

#include <gtest/gtest.h>

namespace exchange {
namespace {

class ErrorFilesTest : public testing::Test {
protected:
    ErrorFilesTest() { files.addFolder("C:\\data"); }
    std::string write(std::string_view answer) { return writeErrorFile(desktop, files, clock, "C:\\data\\", answer); }

    fakes::FakeDesktop desktop;
    fakes::FakeFileSystem files;
    fakes::FakeClock clock;
    const std::string path = "C:\\data\\errors\\20261115_190812.html";
};

TEST_F(ErrorFilesTest, AnAnswerIsKeptByteForByteUnderTheSecondOfItsArrival) {
    using namespace std::string_literals;
    for (const std::string& answer : {"<html>\xE9\xFF\0\n\r</html>"s, ""s, "the later one of the same second"s}) {
        EXPECT_EQ(write(answer), path);
        EXPECT_EQ(files.contents(path), answer + "\r\n");
    }
    clock.advance(std::chrono::seconds{1});
    EXPECT_EQ(write("next"), "C:\\data\\errors\\20261115_190813.html");
    EXPECT_EQ(files.files().size(), 2U);
}

TEST_F(ErrorFilesTest, WhatCannotBeWrittenIsReportedAndHasNoName) {
    files.failWrite(1);
    desktop.whenAsked("Error in WriteErrorFile:Disk full");
    EXPECT_EQ(write("answer"), "");

    fakes::FakeFileSystem blocked;
    blocked.addFile("C:\\data\\errors", "a file of that name");
    desktop.whenAsked("Error in WriteErrorFile:Path/File access error");
    EXPECT_EQ(writeErrorFile(desktop, blocked, clock, "C:\\data\\", "answer"), "");
    EXPECT_EQ(blocked.contents("C:\\data\\errors"), "a file of that name");

    desktop.whenAsked("Error in WriteErrorFile:Path not found");
    EXPECT_EQ(writeErrorFile(desktop, blocked, clock, "C:\\gone\\", "answer"), "");
}

} // namespace
} // namespace exchange
