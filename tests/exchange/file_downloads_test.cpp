// Files that an answer names: where they come from, which are wanted, and where they end up.
#include "connection/web_address.h"
#include "exchange/engine_fixture.h"
#include "exchange/listed_file.h"

namespace exchange {
namespace {

using fakes::Answer;
using Kind = ports::HttpOutcome::Kind;

class FileDownloadsTest : public EngineFixture {
protected:
    [[nodiscard]] Rows filesLeft() const {
        Rows paths = services.files.files();
        std::erase(paths, "c:\\QuorvantisLog.txt"); // the trace of the cabinet reader
        return paths;
    }
};

TEST_F(FileDownloadsTest, EachDestinationHasItsFolder) {
    services.settings.set("Shop", "Main", "InstalledFolder", "C:\\Program Files\\Shop");
    for (const std::string name : {"a b.jpg", "b", "c", "d", "e", "sub/f"}) {
        services.network.willAnswer(file("bytes of " + name));
    }
    EXPECT_TRUE(check("<file filename='a b.jpg' webname='files/a b.jpg'/>"
                      "<group><file filename='b' webname='b' destination='FILES'/></group>"
                      "<file filename='c' webname='/c' destination='database'/>"
                      "<file filename='d' webname='http://other/d' destination='installed'/>"
                      "<file filename='e' webname='HTTPS://other/e' destination='newsflash'/>"
                      "<file filename='sub/f' destination='newsflash'/>"));
    for (const ports::HttpRequest& request : services.network.requests) {
        EXPECT_EQ(request.method, ports::HttpRequest::Method::Get);
    }
    EXPECT_EQ(urls(), (Rows{"http://supplier/shop/files/a%20b.jpg", "http://supplier/shop/b", "http://supplier/c",
                            "http://other/d", "HTTPS://other/e", "http://supplier/shop/sub/f"}));
    EXPECT_EQ(contents("C:\\QV\\files\\a b.jpg"), "bytes of a b.jpg");
    EXPECT_EQ(contents("C:\\QV\\files\\b"), "bytes of b");
    EXPECT_EQ(contents("C:\\QV\\c"), "bytes of c");
    EXPECT_EQ(contents("C:\\Program Files\\Shop\\d"), "bytes of d");
    EXPECT_EQ(contents("C:\\QV\\newsflash\\e"), "bytes of e");
    EXPECT_EQ(contents("C:\\QV\\newsflash\\sub\\f"), "bytes of sub/f");
    EXPECT_EQ(filesLeft().size(), 6U) << "nothing is left elsewhere";
    EXPECT_EQ(watcher.heard.back(), "status Downloading f, Please wait");

    host->addProperty("gfilespath", "D:\\shop files");
    services.network.willAnswer(file("x"));
    EXPECT_FALSE(check("<file filename='a'/>")) << "there is no drive D";
}

TEST_F(FileDownloadsTest, FilesOfOneNameAreNotMistakenForEachOther) {
    for (const std::string bytes : {"of one", "of two", "of one again"}) {
        services.network.willAnswer(file(bytes));
    }
    EXPECT_TRUE(check("<file filename='1\\x' webname='one'/><file filename='2\\X' webname='two'/>"
                      "<file filename='3\\x' webname='one'/><file filename='4\\x' webname='one'/>"));
    EXPECT_EQ(contents("C:\\QV\\files\\2\\X"), "of two");
    EXPECT_EQ(contents("C:\\QV\\files\\3\\x"), "of one again");
    EXPECT_EQ(contents("C:\\QV\\files\\4\\x"), "of one again");
}

TEST_F(FileDownloadsTest, OnlyWhatIsMissingOrOlderIsFetched) {
    services.files.addFile("C:\\QV\\files\\a.dll", "old");
    services.programs.add("C:\\QV\\files\\a.dll", {base::toFileVersion("7.2")});
    for (const std::string version : {"7.2", "7.2.0.0", "7.1.9", "0"}) {
        EXPECT_TRUE(check("<file filename='a.dll' version='" + version + "'/>")) << version;
    }
    EXPECT_TRUE(services.network.requests.empty());
    for (const std::string attributes : {"version='7.10'", "", "version='soon'"}) {
        services.network.willAnswer(file("new" + attributes));
        EXPECT_TRUE(check("<file filename='a.dll' " + attributes + "/>"));
        EXPECT_EQ(contents("C:\\QV\\files\\a.dll"), "new" + attributes);
    }
    services.network.willAnswer(file("forced"));
    EXPECT_TRUE(check("<file filename='a.dll' version='7.2'/>", true));
    EXPECT_EQ(contents("C:\\QV\\files\\a.dll"), "forced");

    EXPECT_TRUE(engine.CheckForFileDownloads(results("<file filename='b'/>"), false, "C:\\QV\\", true));
    session.bDownloadFiles = false;
    EXPECT_TRUE(check("<file filename='b'/>"));
    EXPECT_TRUE(check("<upgrade/>"));
}

TEST_F(FileDownloadsTest, NamesThatLeadElsewhereAreRefused) {
    for (const std::string name : {"..\\a", "sub/../../a", "C:\\a", "\\a", "a:b", "", "nul", "a\\.. \\b"}) {
        EXPECT_FALSE(check("<file filename='" + name + "' webname='x'/>")) << name;
        EXPECT_FALSE(check("<file filename='a' cabfilename='" + name + "/..' webname='x'/>")) << name;
    }
    session.sWebAddress = "https://supplier/";
    for (const std::string webname : {"http://other/a", "file:///c:/a", "ftp://x/a", "javascript:a"}) {
        EXPECT_FALSE(check("<file filename='a' webname='" + webname + "'/>")) << webname;
    }
    host->addProperty("gDisplayExitMsg", false);
    EXPECT_FALSE(check("<file filename='a' destination='elsewhere'/>"));
    EXPECT_EQ(host->get("gDisplayExitMsg"), base::Variant(false));
    EXPECT_FALSE(check("<file filename='a' destination='system'/>"));
    EXPECT_EQ(host->get("gDisplayExitMsg"), base::Variant(true));
    EXPECT_TRUE(services.network.requests.empty());
    EXPECT_EQ(filesLeft(), Rows{});
}

TEST_F(FileDownloadsTest, WhatTheServerMeansByANameDependsOnTheService) {
    struct Row {
        std::string service, webname, address;
    };
    const std::vector<Row> rows = {
        {"http://h", "a", "http://h/a"},
        {"http://h:81/", "sub/a", "http://h:81/sub/a"},
        {"http://h/x/y", "a", "http://h/x/a"},
        {"http://h/x/y/", "/a", "http://h/a"},
        {"http://h?x=/y", "a", "http://h/a"},
        {"http://h/x#/y", "../a", "http://h/../a"},
        {"http://h", "a/b:c", "http://h/a/b:c"},
        {"HTTPS://h/", "http://h/a", ""},
        {"https://h/", "HTTPS://h/a", "HTTPS://h/a"},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(connection::fileAddress(row.service, row.webname), row.address) << row.service << " " << row.webname;
    }
}

TEST_F(FileDownloadsTest, AFileThatIsInUseStaysAndTheHostIsTold) {
    host->addProperty("gDisplayExitMsg", false);
    services.files.addFile("C:\\QV\\files\\a.dll", "old");
    services.files.lock("C:\\QV\\files\\a.dll");
    for (const std::string name : {"a.dll", "B.OCX", "c.jpg"}) {
        services.network.willAnswer(file("new " + name));
    }
    EXPECT_FALSE(check("<file filename='a.dll'/><file filename='B.OCX'/><file filename='c.jpg'/>"));
    EXPECT_EQ(host->get("gDisplayExitMsg"), base::Variant(true));
    services.files.unlock("C:\\QV\\files\\a.dll");
    EXPECT_EQ(contents("C:\\QV\\files\\a.dll"), "old");
    EXPECT_EQ(contents("C:\\QV\\files\\c.jpg"), "new c.jpg") << "one that fails does not stop the others";
    std::erase_if(watcher.heard, [](const std::string& event) { return event.starts_with("status"); });
    EXPECT_EQ(watcher.heard,
              (Rows{"replacing C:\\QV\\files\\a.dll", "placed C:\\QV\\files\\a.dll", "placed C:\\QV\\files\\B.OCX"}));
    EXPECT_EQ(filesLeft().size(), 3U);
}

TEST_F(FileDownloadsTest, CabinetsAreUnpackedAndFetchedOnce) {
    // The library of this test "extracts" two files, the second of them in a folder.
    services.cabinetApi.script = [this](std::uint32_t context, ports::CabinetCallback& callback) {
        for (const std::string name : {"news.txt", "sub\\more.jpg"}) {
            ports::FileInCabinet found{name, 4, 0x5D6F, 0x9906, 0x20, ""};
            if (callback.fileCallback(context, {ports::cabinet::kFileInCabinet, &found, nullptr}) ==
                ports::cabinet::kCopy) {
                services.files.addFile(found.fullTargetName, "file");
                const ports::FilePaths paths{found.fullTargetName, 0};
                static_cast<void>(callback.fileCallback(context, {ports::cabinet::kFileExtracted, nullptr, &paths}));
            }
        }
        return 0U;
    };
    services.network.willAnswer(file("cabinet"));
    EXPECT_TRUE(check("<file filename='news.cab' webname='files/news.cab' destination='newsflash'/>"
                      "<file filename='NEWS.TXT' webname='files/news.cab' destination='database'/>"));
    EXPECT_EQ(services.cabinetApi.lastPath, "C:\\QV\\files\\incoming\\news.cab");
    EXPECT_EQ(filesLeft(),
              (Rows{"C:\\QV\\news.txt", "C:\\QV\\newsflash\\news.txt", "C:\\QV\\newsflash\\sub\\more.jpg"}));
    EXPECT_EQ(contents("C:\\QV\\newsflash\\news.txt"), "file");
    EXPECT_EQ(contents("C:\\QV\\NEWS.TXT"), "file");

    services.network.willAnswer(file("cabinet"));
    EXPECT_FALSE(check("<file filename='absent.txt' cabfilename='x.cab' webname='1'/>"));
    services.cabinetApi.script = [](std::uint32_t, ports::CabinetCallback&) { return 13U; };
    services.network.willAnswer(file("no cabinet"));
    watcher.whenReported("Error in CheckForFileDownloads:clsCabFile.Extract: Invalid data.");
    EXPECT_FALSE(check("<file filename='a.txt' cabfilename='x.cab' webname='1'/>"));
    EXPECT_FALSE(services.files.hasFile("C:\\QV\\files\\incoming\\x.cab"));
}

TEST_F(FileDownloadsTest, ABrokenDownloadEndsUpNowhereAndGoesOnTheNextTime) {
    const std::vector<ports::HttpHeader> headers = {{"Content-Length", "8"}, {"ETag", "\"1\""}};
    services.network.willAnswer(Answer{{"half"}, 200, "OK", headers, Kind::Failed, 18, "broken"});
    services.network.willAnswer(file("good"));
    watcher.whenTold("Error in download : broken");
    watcher.whenFailing("");
    EXPECT_FALSE(check("<file filename='a'/><file filename='b'/>"));
    EXPECT_EQ(filesLeft(),
              (Rows{"C:\\QV\\files\\b", "C:\\QV\\files\\incoming\\a.part", "C:\\QV\\files\\incoming\\a.part.info"}));
    services.network.willAnswer(Answer{{"rest"}, 206, "Partial Content", {{"Content-Range", "bytes 4-7/8"}}});
    EXPECT_TRUE(check("<file filename='a'/>"));
    EXPECT_EQ(contents("C:\\QV\\files\\a"), "halfrest");
    EXPECT_EQ(filesLeft().size(), 2U);

    services.network.willAnswer(Answer{{"ABCD"}, 200, "OK", {}, Kind::Answered, 0, "", [this] { engine.cancel(); }});
    EXPECT_FALSE(check("<file filename='c'/><file filename='d'/>")) << "a Cancel ends the pass";
    EXPECT_EQ(filesLeft().size(), 2U);
}

TEST_F(FileDownloadsTest, AHostThatAsksInTheMiddleOfAnExchangeIsTurnedAway) {
    Rows refused;
    const auto ask = [&] {
        EXPECT_FALSE(
            engine.SendReceive({.url = "http://supplier/", .method = "POST", .results = results("")}, false).succeeded);
        EXPECT_FALSE(check("<file filename='x'/>"));
        EXPECT_FALSE(engine.DownloadUpgrade(*results("<command name='upgrade100'/>"), "C:\\QV\\"));
        refused.emplace_back("asked");
    };
    watcher.meanwhile = [&] { // the events about a library
        if (watcher.heard.back().starts_with("placed")) {
            ask();
        }
    };
    services.network.willAnswer(Answer{{"gone"}, 404, "Not Found"});
    watcher.whenFailing("", Dialogues::Next::GiveUp, ask);
    services.network.willAnswer(Answer{{"dll"}, 200, "OK", {}, Kind::Answered, 0, "", ask});
    EXPECT_FALSE(check("<file filename='a'/><file filename='b.dll'/>"));
    EXPECT_EQ(refused.size(), 3U);
    EXPECT_EQ(contents("C:\\QV\\files\\b.dll"), "dll");
}

} // namespace
} // namespace exchange
