#include "exchange/error_files.h"

#include "fakes/exchange_services.h"
#include "fakes/scripted_watcher.h"

#include <gtest/gtest.h>

namespace exchange {
namespace {

TEST(ErrorFiles, AnAnswerIsKeptByteForByteUnderTheSecondOfItsArrival) {
    using namespace std::string_literals;
    fakes::ExchangeServices services;
    fakes::ScriptedWatcher watcher;
    const std::string path = "C:\\data\\errors\\20261115_190812.html";
    const auto write = [&](const std::string& answer) {
        return writeErrorFile(watcher, services.engine, "C:\\data\\", answer);
    };
    watcher.whenReported("Error in WriteErrorFile:Path not found");
    EXPECT_EQ(write("answer"), "");

    services.files.addFolder("C:\\data");
    for (const std::string& answer : {"<html>\xE9\xFF\0\n\r</html>"s, ""s, "the later one of the same second"s}) {
        EXPECT_EQ(write(answer), path);
        EXPECT_EQ(services.files.contents(path), answer + "\r\n");
    }
    services.clock.advance(std::chrono::seconds{1});
    EXPECT_EQ(write("next"), "C:\\data\\errors\\20261115_190813.html");

    services.files.failWrite(1);
    watcher.whenReported("Error in WriteErrorFile:Disk full");
    EXPECT_EQ(write("answer"), "");
}

} // namespace
} // namespace exchange
