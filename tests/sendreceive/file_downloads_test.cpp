// Files that an answer names: where they come from, which are wanted, and where they end up.
#include "base/runtime_error.h"
#include "sendreceive/control_fixture.h"
#include "sendreceive/listed_file.h"

namespace sendreceive {
namespace {

using fakes::Answer;
using fakes::FakePrograms;
using Kind = ports::HttpOutcome::Kind;

Answer file(const std::string& bytes) {
    return {{bytes}, 200, "OK", {{"Content-Length", std::to_string(bytes.size())}}};
}

class FileDownloadsTest : public ControlFixture {
protected:
    FileDownloadsTest() {
        services.files.addFolder("C:\\QV");
        services.settings.set("Shop", "Dialup", "DialType", "Manual");
        control->sWebAddress = "http://supplier/shop/service.asp?x=a/b";
    }
    std::shared_ptr<xml::XmlDocument> results(const std::string& files) {
        auto document = std::make_shared<xml::XmlDocument>();
        EXPECT_TRUE(document->loadXml("<results>" + files + "</results>"));
        return document;
    }
    bool check(const std::string& listed, bool force = false) {
        return control->CheckForFileDownloads(results(listed), true, "C:\\QV\\", force);
    }
    void option(const std::string& name, const std::string& value) {
        m_options[name] = value;
        host->addMethod("GetValue", [this](const std::vector<base::Variant>& arguments) {
            return base::Variant(m_options[base::toText(arguments.at(0))]);
        });
    }
    [[nodiscard]] std::string contents(const std::string& path) const {
        return services.files.hasFile(path) ? services.files.contents(path) : "(none)";
    }
    // All files but the traces.
    [[nodiscard]] Rows filesLeft() const {
        Rows paths = services.files.files();
        std::erase_if(paths, [](const std::string& path) { return path.ends_with(".txt"); });
        return paths;
    }
    // The box about a set-up program that is refused.
    void expectRefusal(const std::string& routine, const std::string& reason) {
        services.desktop.whenAsked("Error in " + routine +
                                   ":The set-up program QuorVantisSetup.exe was not accepted. " + reason);
    }

private:
    std::map<std::string, std::string> m_options;
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
    Rows urls;
    for (const ports::HttpRequest& request : services.network.requests) {
        EXPECT_EQ(request.method, ports::HttpRequest::Method::Get);
        urls.push_back(request.url);
    }
    EXPECT_EQ(urls, (Rows{"http://supplier/shop/files/a%20b.jpg", "http://supplier/shop/b", "http://supplier/c",
                          "http://other/d", "HTTPS://other/e", "http://supplier/shop/sub/f"}));
    EXPECT_EQ(contents("C:\\QV\\files\\a b.jpg"), "bytes of a b.jpg");
    EXPECT_EQ(contents("C:\\QV\\files\\b"), "bytes of b");
    EXPECT_EQ(contents("C:\\QV\\c"), "bytes of c");
    EXPECT_EQ(contents("C:\\Program Files\\Shop\\d"), "bytes of d");
    EXPECT_EQ(contents("C:\\QV\\newsflash\\e"), "bytes of e");
    EXPECT_EQ(contents("C:\\QV\\newsflash\\sub\\f"), "bytes of sub/f");
    EXPECT_EQ(filesLeft().size(), 6U) << "nothing is left elsewhere";
    EXPECT_EQ(control->lProgress.text(), "Downloading f, Please wait");

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

    EXPECT_TRUE(control->CheckForFileDownloads(results("<file filename='b'/>"), false, "C:\\QV\\", true));
    control->SetDownloadVisible(true);
    control->cDownloadFiles.userClick(); // "Do not download files"
    EXPECT_TRUE(check("<file filename='b'/>"));
    EXPECT_TRUE(check("<upgrade/>"));
}

TEST_F(FileDownloadsTest, NamesThatLeadElsewhereAreRefused) {
    for (const std::string name : {"..\\a", "sub/../../a", "C:\\a", "\\a", "a:b", "", "nul", "a\\.. \\b"}) {
        EXPECT_FALSE(check("<file filename='" + name + "' webname='x'/>")) << name;
        EXPECT_FALSE(check("<file filename='a' cabfilename='" + name + "/..' webname='x'/>")) << name;
    }
    control->sWebAddress = "https://supplier/";
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
        EXPECT_EQ(fileAddress(row.service, row.webname), row.address) << row.service << " " << row.webname;
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
    EXPECT_EQ(listener.heard, (Rows{"UnregisterServer C:\\QV\\files\\a.dll", "RegisterServer C:\\QV\\files\\a.dll",
                                    "RegisterServer C:\\QV\\files\\B.OCX"}));
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
    EXPECT_EQ(filesLeft(), (Rows{"C:\\QV\\newsflash\\sub\\more.jpg"}));
    EXPECT_EQ(contents("C:\\QV\\newsflash\\news.txt"), "file");
    EXPECT_EQ(contents("C:\\QV\\NEWS.TXT"), "file");

    services.network.willAnswer(file("cabinet"));
    EXPECT_FALSE(check("<file filename='absent.txt' cabfilename='x.cab' webname='1'/>"));
    services.cabinetApi.script = [](std::uint32_t, ports::CabinetCallback&) { return 13U; };
    services.network.willAnswer(file("no cabinet"));
    services.desktop.whenAsked("Error in CheckForFileDownloads:clsCabFile.Extract: Invalid data.");
    EXPECT_FALSE(check("<file filename='a.txt' cabfilename='x.cab' webname='1'/>"));
    EXPECT_FALSE(services.files.hasFile("C:\\QV\\files\\incoming\\x.cab"));
}

TEST_F(FileDownloadsTest, ABrokenDownloadEndsUpNowhereAndGoesOnTheNextTime) {
    const std::vector<ports::HttpHeader> headers = {{"Content-Length", "8"}, {"ETag", "\"1\""}};
    services.network.willAnswer(Answer{{"half"}, 200, "OK", headers, Kind::Failed, 18, "broken"});
    services.network.willAnswer(file("good"));
    services.desktop.whenAsked("Error in download : broken");
    services.desktop.whenShown("frmMsgBox", [this] { services.desktop.shownForm()->userClose(); });
    EXPECT_FALSE(check("<file filename='a'/><file filename='b'/>"));
    EXPECT_EQ(filesLeft(),
              (Rows{"C:\\QV\\files\\b", "C:\\QV\\files\\incoming\\a.part", "C:\\QV\\files\\incoming\\a.part.info"}));
    services.network.willAnswer(Answer{{"rest"}, 206, "Partial Content", {{"Content-Range", "bytes 4-7/8"}}});
    EXPECT_TRUE(check("<file filename='a'/>"));
    EXPECT_EQ(contents("C:\\QV\\files\\a"), "halfrest");
    EXPECT_EQ(filesLeft().size(), 2U);

    services.network.willAnswer(
        Answer{{"ABCD"}, 200, "OK", {}, Kind::Answered, 0, "", [this] { control->cmdCancel.userClick(); }});
    EXPECT_FALSE(check("<file filename='c'/><file filename='d'/>")) << "a Cancel ends the pass";
    EXPECT_EQ(filesLeft().size(), 2U);
}

TEST_F(FileDownloadsTest, ASetUpProgramMustBeWhatWasAnnounced) {
    struct Row {
        std::string name;
        Answer answer;
        std::string attributes; // of its file element
        FakePrograms::Program program;
        std::string signedBy; // that the host requires; "-": it requires no signature
        std::string refusal;  // "": none
    };
    const FakePrograms::Program none;
    const FakePrograms::Program ours{base::toFileVersion("7.2"), FakePrograms::trusted("Our Shop")};
    const std::vector<Row> rows = {
        {"as announced", file("MZ"), "version='7.2'", ours, "-", ""},
        {"signed by whomever", file("MZ"), "", ours, "", ""},
        {"signed by us", file("MZ"), "", ours, "Our Shop", ""},
        {"of no known length", {{"MZ"}}, "", ours, "-", "The server does not say how long it is."},
        {"too short", {{"M"}, 200, "OK", {{"Content-Length", "2"}}}, "", ours, "-", "-"},
        {"older", file("MZ"), "version='7.2.1'", ours, "-", "It is not of version 7.2.1."},
        {"without a version", file("MZ"), "version='7.2'", none, "-", "It is not of version 7.2."},
        {"compared with no version", file("MZ"), "version='new'", ours, "-", "It is not of version new."},
        {"unsigned", file("MZ"), "", none, "", "It is not signed."},
        {"signed by others", file("MZ"), "", ours, "Their Shop", "It is signed by Our Shop."},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        for (const std::string folder : {"files\\incoming\\", "upgrade\\upgrade7\\"}) {
            services.programs.add("C:\\QV\\" + folder + "QuorVantisSetup.exe", row.program);
            option("RequireSignedSetup", row.signedBy == "-" ? "False" : "True");
            option("SetupPublisher", row.signedBy == "-" ? "Nobody" : row.signedBy);
            control->bMustRunSetup = false;
            control->MustRunSetupName.clear();
            services.network.willAnswer(row.answer);
            const bool upgrade = folder.starts_with("upgrade");
            if (row.refusal == "-") { // the transfer itself shows it
                services.desktop.whenAsked("Error in download : The file is not as long as the server says.");
                services.desktop.whenShown("frmMsgBox", [this] { services.desktop.shownForm()->userClose(); });
            } else if (!row.refusal.empty()) {
                expectRefusal(upgrade ? "DownloadUpgrade" : "CheckForFileDownloads", row.refusal);
            }
            EXPECT_EQ(check((upgrade ? "<command name='upgrade100' latestversion='7'/>" : "<command/>") +
                            std::string("<file filename='QuorVantisSetup.exe' ") + row.attributes + "/>"),
                      row.refusal.empty());
            EXPECT_EQ(control->bMustRunSetup, row.refusal.empty());
            const std::string placed =
                upgrade ? "C:\\QV\\upgrade\\upgrade7\\QuorVantisSetup.exe" : "C:\\QV\\files\\QuorVantisSetup.exe";
            EXPECT_EQ(control->MustRunSetupName, row.refusal.empty() ? placed : "");
            EXPECT_EQ(services.files.hasFile(placed), row.refusal.empty());
            if (services.files.hasFile(placed)) {
                services.files.removeFile(placed);
            }
        }
    }
}

TEST_F(FileDownloadsTest, AnUpgradeIsFetchedIntoAFolderOfItsVersion) {
    const std::string listed = "<command name='upgrade100' latestversion='8'/><command name='firstdownload100' "
                               "latestversion='7.2'><file filename='a.exe' webname='up/1'/></command>"
                               "<file filename='..\\b' webname='up/2'/><file filename='c.txt' webname='up/3'/>";
    services.network.willAnswer(Answer{{"no"}, 404, "Not Found"});
    services.network.willAnswer(file("cc"));
    services.desktop.whenShown("frmMsgBox", [this] { services.desktop.shownForm()->userClose(); });
    EXPECT_TRUE(control->DownloadUpgrade(results(listed), "QV", "C:\\")) << "the last one counts";
    EXPECT_EQ(contents("C:\\QV\\upgrade\\upgrade7.2\\c.txt"), "cc");
    EXPECT_FALSE(services.files.hasFile("C:\\QV\\upgrade\\b"));
    EXPECT_EQ(contents("C:\\QV\\upgrade.xml"), results(listed)->xml() + "\r\n");
    EXPECT_EQ(services.network.requests.size(), 2U);

    EXPECT_FALSE(control->DownloadUpgrade(results("<command name='upgrade100'/>"), "New", "C:\\QV\\"));
    EXPECT_TRUE(services.files.folderExists("C:\\QV\\New\\upgrade\\upgrade"));
    EXPECT_TRUE(services.files.hasFile("C:\\QV\\New\\upgrade.xml"));
    EXPECT_FALSE(control->DownloadUpgrade(
        results("<command name='upgrade100' latestversion='..\\..'/><file filename='a'/>"), "New", "C:\\QV\\"));
    EXPECT_FALSE(control->DownloadUpgrade(results("<file filename='a'/>"), "Other", "C:\\QV\\"));
    EXPECT_TRUE(services.files.folderExists("C:\\QV\\Other\\upgrade"));
    EXPECT_FALSE(services.files.hasFile("C:\\QV\\Other\\upgrade.xml"));

    services.files.denyCreation("C:\\QV");
    EXPECT_THROW((void)control->DownloadUpgrade(results("<file filename='a'/>"), "Third", "C:\\QV\\"),
                 base::RuntimeError);
    EXPECT_THROW((void)control->DownloadUpgrade(nullptr, "QV", "C:\\"), base::RuntimeError);
}

TEST_F(FileDownloadsTest, SetUpStartsWhenTheHostKnowsOfIt) {
    const std::string text = "A. You need to upgrade QuorVantis: \r\n  1) Press OK to start the upgrade.\r\n"
                             "  2) When the upgrade is complete QuorVantis will re-start.";
    const auto runSetup = [&]() -> std::int32_t {
        services.desktop.whenAsked(text);
        try {
            control->RunSetup();
            return 0;
        } catch (const base::RuntimeError& e) {
            return e.number();
        }
    };
    EXPECT_EQ(runSetup(), 0) << "there is none";
    services.files.addFile("C:\\quorvantissetup.exe", "MZ");
    EXPECT_EQ(runSetup(), base::error::kNoSuchMember);
    host->addProperty("gBusyWithUpgrade", false);
    option("RequireSignedSetup", "True");
    EXPECT_EQ(runSetup(), base::error::kPermissionDenied);
    EXPECT_EQ(host->get("gBusyWithUpgrade"), base::Variant(false));
    EXPECT_EQ(services.programs.started, Rows{});

    services.programs.add("C:\\\\QuorVantisSetup.exe", {std::nullopt, FakePrograms::trusted("Our Shop")});
    EXPECT_EQ(runSetup(), 0);
    EXPECT_EQ(host->get("gBusyWithUpgrade"), base::Variant(true));
    option("RequireSignedSetup", "False");
    services.files.addFile("C:\\QV\\Setup.exe", "MZ");
    control->MustRunSetupName = "C:\\QV\\Setup.exe";
    EXPECT_EQ(runSetup(), 0);
    EXPECT_EQ(services.programs.started, (Rows{"C:\\\\QuorVantisSetup.exe", "C:\\QV\\Setup.exe"}));
    EXPECT_EQ(services.programs.held, Rows{});
}

TEST_F(FileDownloadsTest, ARunFetchesFilesAndEndsWithTheSetUp) {
    host->addProperty("gBusyWithUpgrade", false);
    load("<commands><command name='getnews' checked='yes' show='yes' forcedownload='true'/></commands>");
    control->bLoginNotRequired = true;
    services.files.addFile("C:\\QV\\files\\QuorVantisSetup.exe", "old");
    services.programs.add("C:\\QV\\files\\QuorVantisSetup.exe", {base::toFileVersion("7")});
    services.network.willAnswer("<results><file filename='QuorVantisSetup.exe' version=''/></results>");
    services.network.willAnswer(file("MZ"));
    services.desktop.whenAsked("A. You need to upgrade QuorVantis: \r\n  1) Press OK to start the upgrade.\r\n"
                               "  2) When the upgrade is complete QuorVantis will re-start.");
    control->cmdOK.userClick();
    EXPECT_EQ(services.programs.started, (Rows{"C:\\QV\\files\\QuorVantisSetup.exe"}));
    EXPECT_EQ(control->lvCommands.cell(0, 3), "Done");
    EXPECT_FALSE(control->bMustRunSetup);
}

TEST_F(FileDownloadsTest, AHostThatAsksInTheMiddleOfAnExchangeIsTurnedAway) {
    Rows refused;
    const auto ask = [&] {
        std::string url = "http://supplier/";
        EXPECT_FALSE(control->SendReceive(url, "POST", results(""), nullptr, "", false, false));
        EXPECT_FALSE(control->DownloadFile(url, "C:\\QV\\x"));
        EXPECT_FALSE(control->CheckForFileDownloads(results("<file filename='x'/>"), true, "C:\\QV\\", false));
        EXPECT_FALSE(control->DownloadUpgrade(results("<command name='upgrade100'/>"), "QV", "C:\\"));
        refused.emplace_back("asked");
    };
    listener.meanwhile = ask; // the events about a library
    services.network.willAnswer(Answer{{"gone"}, 404, "Not Found"});
    services.desktop.whenShown("frmMsgBox", [&] { // a dialogue of the exchange is open
        ask();
        services.desktop.shownForm()->userClose();
    });
    services.network.willAnswer(Answer{{"dll"}, 200, "OK", {}, Kind::Answered, 0, "", ask});
    EXPECT_FALSE(check("<file filename='a'/><file filename='b.dll'/>"));
    EXPECT_EQ(refused.size(), 3U);
    EXPECT_EQ(contents("C:\\QV\\files\\b.dll"), "dll");
}

} // namespace
} // namespace sendreceive
