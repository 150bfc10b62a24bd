#include "connection/https_control.h"

#include "base/runtime_error.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_network.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace connection {
namespace {

using Action = HttpsControl::Action;
using Kind = ports::HttpOutcome::Kind;

class HttpsControlTest : public testing::Test {
protected:
    HttpsControlTest() {
        files.addFolder("C:\\data");
        https.URL = "http://supplier.example/service";
        https.onError = [this](std::int32_t code, const std::string& description) {
            log += "error " + std::to_string(code) + " " + description + "|";
        };
        https.onTransferEnd = [this](bool complete) { log += complete ? "whole|" : "broken off|"; };
        https.onDisconnected = [this](std::int32_t code, const std::string&) {
            log += "disconnected " + std::to_string(code);
        };
    }
    std::string perform(Action action) {
        log.clear();
        const HttpsResult result = https.perform(action);
        return std::to_string(result.number) + " " + result.description;
    }
    std::string perform(Action action, fakes::Answer answer) {
        network.willAnswer(std::move(answer));
        return perform(action);
    }

    fakes::FakeNetwork network;
    fakes::FakeFileSystem files;
    HttpsControl https{network, files};
    std::string log;
};

TEST_F(HttpsControlTest, OutcomesGetTheNumbersThatTheDialoguesGoBy) {
    struct Row {
        std::string name;
        Action action;
        fakes::Answer answer;
        std::string result;
        std::string log;
    };
    const std::vector<Row> rows = {
        {"an answer", Action::Post, {{"<a/>"}}, "0 ", "whole|disconnected 0"},
        {"nothing in it", Action::Get, {{}, 204, "No Content"}, "0 ", "whole|disconnected 0"},
        {"an error page",
         Action::Get,
         {{"<p/>"}, 404, "Not Found"},
         "20152 HTTP protocol error. 404 Not Found",
         "whole|disconnected 20152"},
        {"a redirected post",
         Action::Post,
         {{}, 302, "Found"},
         "20152 HTTP protocol error. 302 Found",
         "whole|disconnected 20152"},
        {"a switched-off service",
         Action::Post,
         {{"<SysDown/> <SYSdown>"}, 503, "Service Unavailable"},
         "0 ",
         "whole|disconnected 0"},
        {"a redirection in a circle",
         Action::Get,
         {{"x"}, 301, "Moved", {}, Kind::TooManyRedirects},
         "20152 HTTP protocol error. 301 Moved",
         "broken off|disconnected 20152"},
        {"nobody there",
         Action::Get,
         {{}, 0, "", {}, Kind::ConnectFailed, 7, "Could not connect"},
         "20152 Could not connect",
         "broken off|"},
        {"no word",
         Action::Get,
         {{}, 0, "", {}, Kind::TimedOut, 28, "too slow"},
         "20152 The operation timed out.",
         "broken off|"},
        {"an unknown name",
         Action::Get,
         {{}, 0, "", {}, Kind::Failed, 6, "Could not resolve host"},
         "20006 Could not resolve host",
         "broken off|"},
        {"a broken answer",
         Action::Get,
         {{"half"}, 200, "OK", {}, Kind::Failed, 18, "12 bytes missing"},
         "20018 12 bytes missing",
         "error 20018 12 bytes missing|broken off|disconnected 20018"},
        {"a Cancel",
         Action::Get,
         {{"x"}, 200, "OK", {}, Kind::Answered, 0, "", [this] { https.cancel(); }},
         "20042 The operation was cancelled.",
         "broken off|"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(perform(row.action, row.answer), row.result) << row.name;
        EXPECT_EQ(log, row.log) << row.name;
    }
}

TEST_F(HttpsControlTest, AFetchedFileIsPutInItsPlaceOnlyWhole) {
    const std::string big(3'000'000, 'x');
    https.LocalFile = "C:\\data\\a.zip";
    EXPECT_EQ(perform(Action::Get, {{big, "end"}}), "0 ");
    EXPECT_EQ(files.contents("C:\\data\\a.zip"), big + "end");
    EXPECT_EQ(https.response().size(), HttpsControl::kKeptOfAFile);

    const std::vector<fakes::Answer> failures = {
        {{big}, 200, "OK", {}, Kind::Failed, 18, "broken"}, {{big}, 404, "Not Found"}, {{"<SYSDOWN>"}}, {{}}};
    for (const fakes::Answer& failure : failures) {
        static_cast<void>(perform(Action::Get, failure));
        EXPECT_EQ(files.contents("C:\\data\\a.zip"), big + "end");
        EXPECT_FALSE(files.fileExists("C:\\data\\a.zip.part"));
    }
}

TEST_F(HttpsControlTest, AFullDiskEndsTheTransfer) {
    https.LocalFile = "C:\\data\\a.zip";
    files.failWrite(2);
    EXPECT_EQ(perform(Action::Get, {{std::string(300'000, 'x'), std::string(300'000, 'x'), "never asked for"}}),
              "20023 Disk full");
    EXPECT_EQ(log, "error 20023 Disk full|broken off|disconnected 20023");
    EXPECT_FALSE(files.fileExists("C:\\data\\a.zip"));
    EXPECT_FALSE(files.fileExists("C:\\data\\a.zip.part"));
}

TEST_F(HttpsControlTest, OneRequestAtATime) {
    std::int32_t nested = 0;
    static_cast<void>(perform(Action::Get, {{"x"}, 200, "OK", {}, Kind::Answered, 0, "", [&] {
                                                try {
                                                    static_cast<void>(https.perform(Action::Get));
                                                } catch (const base::RuntimeError& e) {
                                                    nested = e.number();
                                                }
                                            }}));
    EXPECT_EQ(nested, 5);
    EXPECT_EQ(https.response(), "x");
}

} // namespace
} // namespace connection
