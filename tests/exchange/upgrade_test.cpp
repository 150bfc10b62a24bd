// Set-up programs and upgrades that an answer names: which are accepted, where they go, when they are started.
#include "exchange/engine_fixture.h"

#include "base/error_number.h"
namespace exchange {
namespace {

using fakes::Answer;
using fakes::FakePrograms;

class UpgradeTest : public EngineFixture {
protected:
    void expectRefusal(const std::string& routine, const std::string& reason) {
        watcher.whenReported("Error in " + routine + ":The set-up program QuorVantisSetup.exe was not accepted. " +
                             reason);
    }
};

TEST_F(UpgradeTest, ASetUpProgramMustBeWhatWasAnnounced) {
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
            session.bMustRunSetup = false;
            session.MustRunSetupName.clear();
            services.network.willAnswer(row.answer);
            const bool upgrade = folder.starts_with("upgrade");
            if (row.refusal == "-") { // the transfer itself shows it
                watcher.whenTold("Error in download : The file is not as long as the server says.");
                watcher.whenFailing("");
            } else if (!row.refusal.empty()) {
                expectRefusal(upgrade ? "DownloadUpgrade" : "CheckForFileDownloads", row.refusal);
            }
            EXPECT_EQ(check((upgrade ? "<command name='upgrade100' latestversion='7'/>" : "<command/>") +
                            std::string("<file filename='QuorVantisSetup.exe' ") + row.attributes + "/>"),
                      row.refusal.empty());
            EXPECT_EQ(session.bMustRunSetup, row.refusal.empty());
            const std::string placed =
                upgrade ? "C:\\QV\\upgrade\\upgrade7\\QuorVantisSetup.exe" : "C:\\QV\\files\\QuorVantisSetup.exe";
            EXPECT_EQ(session.MustRunSetupName, row.refusal.empty() ? placed : "");
            EXPECT_EQ(services.files.hasFile(placed), row.refusal.empty());
            if (services.files.hasFile(placed)) {
                services.files.removeFile(placed);
            }
        }
    }
}

TEST_F(UpgradeTest, AnUpgradeIsFetchedIntoAFolderOfItsVersion) {
    const std::string listed = "<command name='upgrade100' latestversion='8'/><command name='firstdownload100' "
                               "latestversion='7.2'><file filename='a.exe' webname='up/1'/></command>"
                               "<file filename='..\\b' webname='up/2'/><file filename='c.txt' webname='up/3'/>";
    services.network.willAnswer(Answer{{"no"}, 404, "Not Found"});
    services.network.willAnswer(file("cc"));
    watcher.whenFailing("");
    EXPECT_TRUE(engine.DownloadUpgrade(*results(listed), "C:\\QV\\")) << "the last one counts";
    EXPECT_EQ(contents("C:\\QV\\upgrade\\upgrade7.2\\c.txt"), "cc");
    EXPECT_FALSE(services.files.hasFile("C:\\QV\\upgrade\\b"));
    EXPECT_EQ(contents("C:\\QV\\upgrade.xml"), results(listed)->xml() + "\r\n");
    EXPECT_EQ(services.network.requests.size(), 2U);

    EXPECT_FALSE(engine.DownloadUpgrade(*results("<command name='upgrade100'/>"), "C:\\QV\\New\\"));
    EXPECT_TRUE(services.files.folderExists("C:\\QV\\New\\upgrade\\upgrade"));
    EXPECT_TRUE(services.files.hasFile("C:\\QV\\New\\upgrade.xml"));
    EXPECT_FALSE(engine.DownloadUpgrade(
        *results("<command name='upgrade100' latestversion='..\\..'/><file filename='a'/>"), "C:\\QV\\New\\"));
    EXPECT_FALSE(engine.DownloadUpgrade(*results("<file filename='a'/>"), "C:\\QV\\Other\\"));
    EXPECT_TRUE(services.files.folderExists("C:\\QV\\Other\\upgrade"));
    EXPECT_FALSE(services.files.hasFile("C:\\QV\\Other\\upgrade.xml"));

    services.files.denyCreation("C:\\QV");
    EXPECT_THROW((void)engine.DownloadUpgrade(*results("<file filename='a'/>"), "C:\\QV\\Third\\"), base::RuntimeError);
}

TEST_F(UpgradeTest, SetUpStartsWhenTheHostKnowsOfIt) {
    const auto runSetup = [&] {
        watcher.whenSetUpIsDue();
        return base::errorNumber([&] { engine.RunSetup(); });
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
    session.MustRunSetupName = "C:\\QV\\Setup.exe";
    EXPECT_EQ(runSetup(), 0);
    EXPECT_EQ(services.programs.started, (Rows{"C:\\\\QuorVantisSetup.exe", "C:\\QV\\Setup.exe"}));
    EXPECT_EQ(services.programs.held, Rows{});
}

} // namespace
} // namespace exchange
