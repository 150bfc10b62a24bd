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

// A download of "0123456789" that is broken off after five bytes, and what becomes of it at the next request.
TEST_F(HttpsControlTest, ABrokenDownloadGoesOnWhereItEnded) {
    const std::string target = "C:\\data\\a.zip";
    const std::vector<ports::HttpHeader> whole = {{"Content-Length", "10"}, {"ETag", "\"one\""}};
    const std::vector<ports::HttpHeader> rest = {{"content-range", "bytes 5-9/10"}, {"Content-Length", "5"}};
    struct Row {
        std::string name;
        std::vector<fakes::Answer> answers;
        std::string result;
        std::string file; // "": none
        bool partLeft;
    };
    const fakes::Answer again{{"abcdefghij"}, 200, "OK", whole};
    const std::vector<Row> rows = {
        {"the rest", {{{"56", "789"}, 206, "Partial Content", rest}}, "0 ", "0123456789", false},
        {"another file by now", {again}, "0 ", "abcdefghij", false},
        {"a rest of something else",
         {{{"xxxxx"}, 206, "Partial Content", {{"Content-Range", "bytes 4-9/10"}}}, again},
         "0 ",
         "abcdefghij",
         false},
        {"the file has become shorter", {{{}, 416, "Range Not Satisfiable"}, again}, "0 ", "abcdefghij", false},
        {"a rest that is too short",
         {{{"56"}, 206, "Partial Content", {{"Content-Range", "bytes 5-9/10"}}}},
         "20018 The file is not as long as the server says.",
         "",
         false},
        {"broken off again",
         {{{"56"}, 206, "Partial Content", rest, Kind::Failed, 18, "broken"}},
         "20018 broken",
         "",
         true},
        {"an error page", {{{"sorry"}, 503, "No"}}, "20152 HTTP protocol error. 503 No", "", true},
        {"a switched-off service", {{{"<SYSDOWN>"}, 200, "OK"}}, "0 ", "", false},
    };
    https.LocalFile = target;
    https.Resume = true;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        static_cast<void>(perform(Action::Get, {{"012", "34"}, 200, "OK", whole, Kind::Failed, 18, "broken"}));
        EXPECT_FALSE(files.fileExists(target));
        EXPECT_EQ(files.contents(target + ".part"), "01234");
        for (const fakes::Answer& answer : row.answers) {
            network.willAnswer(answer);
        }
        EXPECT_EQ(perform(Action::Get), row.result);
        const std::vector<ports::HttpHeader>& asked =
            network.requests[network.requests.size() - row.answers.size()].headers;
        ASSERT_EQ(asked.size(), 2U);
        EXPECT_EQ(asked[0].field + ": " + asked[0].value, "Range: bytes=5-");
        EXPECT_EQ(asked[1].field + ": " + asked[1].value, "If-Range: \"one\"");
        EXPECT_EQ(files.fileExists(target) ? files.contents(target) : "", row.file);
        EXPECT_EQ(files.fileExists(target + ".part"), row.partLeft);
        EXPECT_EQ(files.fileExists(target + ".part.info"), row.partLeft);
        for (const std::string& file : {target, target + ".part", target + ".part.info"}) {
            if (files.fileExists(file)) {
                files.removeFile(file);
            }
        }
    }
}

TEST_F(HttpsControlTest, OnlyAPartOfTheSameFileIsGoneOnWith) {
    const std::string target = "C:\\data\\a.zip";
    https.LocalFile = target;
    https.Resume = true;
    // Nothing says that the file will be the same one next time: no part stays.
    for (const std::vector<ports::HttpHeader>& headers : {std::vector<ports::HttpHeader>{{"Content-Length", "10"}},
                                                          {{"ETag", "\"one\""}},
                                                          {{"Content-Length", "10"}, {"ETag", "W/\"weak\""}}}) {
        static_cast<void>(perform(Action::Get, {{"01234"}, 200, "OK", headers, Kind::Failed, 18, "broken"}));
        EXPECT_FALSE(files.fileExists(target + ".part"));
    }
    // What was left for another address, or cannot be read, is not asked for.
    const std::string ours = https.URL + "\r\nSun, 22 Nov 2026 10:00:00 GMT\r\n10\r\n";
    for (const std::string& info :
         std::vector<std::string>{"http://elsewhere/\r\n\"one\"\r\n10\r\n", "rubbish", ours + "more"}) {
        files.addFile(target + ".part", "01234");
        files.addFile(target + ".part.info", info);
        EXPECT_EQ(perform(Action::Get, {{"abc"}}), "0 ");
        EXPECT_TRUE(network.requests.back().headers.empty()) << info;
        EXPECT_EQ(files.contents(target), "abc");
        EXPECT_FALSE(files.fileExists(target + ".part.info"));
    }
    files.addFile(target + ".part", "01234");
    files.addFile(target + ".part.info", ours);
    EXPECT_EQ(perform(Action::Get, {{"abc"}}), "0 ");
    EXPECT_EQ(network.requests.back().headers.size(), 2U);
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
