// Files and upgrades that the service has for a host: from its answer until each file is in its place, and the set-up
// program runs. Signed programs come from a launcher around this program (tests/peers/with_programs).
#include "peers/internet_options.h"
#include "peers/trusted_authority.h"
#include "windows/end_to_end/own_host.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <string>

namespace end_to_end {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const std::string kUpgrade = "<command name='upgrade100' show='yes' displaytext='Upgrade' checked='yes'/>";
const std::string kSigned = "RequireSignedSetup: 'True', SetupPublisher: 'Test Publisher'";
const std::string kSetup = "upgrade\\upgrade7.2\\quorvantissetup.exe";
const std::string kStarted = kSetup + ".started"; // what sample_program writes

class Updates : public OwnHost {
protected:
    static std::string program(const std::string& name) { return contentsOf(environment("QVI_PROGRAMS") + "/" + name); }
    // A file that the service hands out.
    static void serve(const std::string& name, const std::string& bytes) {
        std::ofstream(onDrive(supplierFile("files/" + name)), std::ios::binary) << bytes;
    }
    // `more` is what the service does beside.
    static void offerSetup(const std::string& bytes, const std::string& version = "7.2", const std::string& more = "") {
        serve("setup.exe", bytes);
        behave(version, more);
    }
    static void behave(const std::string& version, const std::string& more = "") {
        supplierIs(R"(<answer command="upgrade100" latestversion="7.2">)"
                   R"(<file webname="files/setup.exe" filename="quorvantissetup.exe" version=")" +
                   version + R"("/></answer>)" + more);
    }
    // The host may have ended meanwhile.
    void expectStarted() const {
        drive::Patience(drive::HostProcess()).until("the set-up program to start", [this] { return exists(kStarted); });
    }

private:
    peers::TrustedAuthority m_authority{environment("QVI_PROGRAMS") + "/ca.pem"};
};

TEST_F(Updates, FilesGoWhereTheyBelongWhenTheyAreNeeded) {
    setSetting("Main", "InstalledFolder", folder() + "program");
    serve("news.txt", "spring");
    serve("tool.exe", program("unsigned.exe"));
    serve("catalogue.cab", contentsOf(QVI_TEST_DATA "/cabinets/mszip.cab"));
    const auto answer = [](const std::string& version) {
        return R"(<answer command="prices"><file webname="files/news.txt" filename="news.txt" destination="newsflash"/>)"
               R"(<file webname="files/catalogue.cab" filename="catalogue.cab"/>)"
               R"(<file webname="files/tool.exe" filename="tools\tool.exe" destination="installed" version=")" +
               version +
               R"("/><file webname="files/news.txt" filename="driver.dll" destination="system"/>)"
               R"(<file webname="files/news.txt" filename="..\outside.txt" destination="database"/></answer>)";
    };
    supplierIs(answer("7.2.0.1"));
    startControl(std::string(kPrices));
    logIn();
    expectIdle();
    EXPECT_EQ(read("newsflash\\news.txt"), "spring");
    EXPECT_EQ(read("files\\a.txt").size(), 6U);
    EXPECT_EQ(read("files\\sub\\lines.txt").size(), 18893U);
    EXPECT_EQ(read("program\\tools\\tool.exe"), program("unsigned.exe"));
    EXPECT_FALSE(exists("..\\outside.txt"));

    logIn(); // the tool is the one that is here
    expectIdle();
    supplierIs(answer("7.3"));
    serve("news.txt", "summer");
    {
        const LockedFile reading(folder() + "newsflash\\news.txt");
        logIn();
        expectIdle();
    }
    EXPECT_EQ(read("newsflash\\news.txt"), "spring") << "it is in use";
    EXPECT_THAT(heard(), HasSubstr("gDisplayExitMsg"));
    EXPECT_EQ(requests(), "prices lastdate=20200131\nnews.txt status=200\ncatalogue.cab status=200\n"
                          "tool.exe status=200\nprices lastdate=" +
                              today() + "\nnews.txt status=200\ncatalogue.cab status=200\nprices lastdate=" + today() +
                              "\nnews.txt status=200\ncatalogue.cab status=200\ntool.exe status=200\n");
    EXPECT_THAT(namesLike("files\\incoming\\*.*"), ElementsAre(".", "..", "unpacked"));
}

TEST_F(Updates, NoSetupProgramRunsThatIsNotSignedAsTheHostWants) {
    startControl(kUpgrade, kSigned);
    struct Row {
        std::string program, version, problem;
    };
    const Row rows[] = {{"unsigned.exe", "7.2", "It is not signed."},
                        {"tampered.exe", "7.2", "It was changed after it was signed."},
                        {"transplanted.exe", "7.2", "It was changed after it was signed."},
                        {"unknown_signer.exe", "7.2", "Its signer is not known on this computer."},
                        {"self_signed.exe", "7.2", "Its signer is not known on this computer."},
                        {"expired.exe", "7.2", "Its signer's certificate has expired, or is not valid yet."},
                        {"another_publisher.exe", "7.2", "It is signed by Another Publisher."},
                        {"good.exe", "7.3", "It is not of version 7.3."}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.program);
        offerSetup(program(row.program), row.version);
        logIn();
        play("box \"The set-up program quorvantissetup.exe was not accepted. " + row.problem + "\" OK\n");
        expectIdle();
        EXPECT_FALSE(exists(kSetup));
    }
    offerSetup(program("good.exe"));
    logIn();
    play("wait-dialog box");
    write(kSetup, program("unsigned.exe")); // by somebody else, while the person reads
    play("box \"You need to upgrade QuorVantis\" OK\nbox \"quorvantissetup.exe was not accepted. It is not signed.\" "
         "OK\n");
    expectIdle();
    EXPECT_FALSE(exists(kStarted));

    logIn();
    play("box \"You need to upgrade QuorVantis\" OK\n");
    expectStarted();
    EXPECT_THAT(heard(), HasSubstr("gBusyWithUpgrade"));
    EXPECT_THAT(read("upgrade.xml"), HasSubstr("latestversion=\"7.2\""));
}

TEST_F(Updates, AHostThatAsksForNoSignatureGetsWhatTheServerHas) {
    startControl(kUpgrade);
    offerSetup(program("unsigned.exe"));
    logIn();
    play("box \"You need to upgrade QuorVantis\" OK\n");
    expectStarted();
    EXPECT_EQ(read(kStarted), "show 3, parameters ''");
    static_cast<void>(heard());
}

// By automation, without a window of the control.
TEST_F(Updates, AScriptHostFetchesAnUpgradeAndStartsIt) {
    const auto start = [this](const std::string& publisher) {
        startScript("fetch_updates.js", "\"" + folder() + "\\\" " + webAddress + " 1001 secret \"" + publisher + "\"");
    };
    offerSetup(program("good.exe"));
    start("Somebody Else");
    play("box \"It is signed by Test Publisher.\" OK\nbox \"You need to upgrade QuorVantis\" OK\n");
    EXPECT_EQ(hostEnds(), "upgrade to 7.2\r\nthere is no set-up program\r\nEND\r\n");
    EXPECT_FALSE(exists(kSetup));

    start("Test Publisher");
    play("box \"You need to upgrade QuorVantis\" OK\n");
    EXPECT_EQ(hostEnds(), "upgrade to 7.2\r\nset-up was started\r\nEND\r\n");
    expectStarted();

    start("Test Publisher");
    play("wait-dialog box");
    write(kSetup, program("another_publisher.exe"));
    play("box \"You need to upgrade QuorVantis\" OK\n"
         "host-prints \"quorvantissetup.exe was not accepted. It is signed by Another Publisher. (error 70)\"\n"
         "wait-exit 1\n");
}

TEST_F(Updates, ABrokenDownloadLeavesNoFileAndGoesOnTheNextTime) {
    peers::forgetProxyVariables();
    const std::string whole = program("good.exe");
    const std::string other = program("another_publisher.exe");
    const auto breakOff = [&] {
        offerSetup(whole, "7.2", R"(<cut file="setup.exe" after="300000"/>)");
        logIn();
        play("box \"Error in download : \" OK\nwait frmMsgBox\nclick cmdButton1\n");
        expectIdle();
        EXPECT_FALSE(exists(kSetup));
    };
    const auto goesOnAs = [&](const std::string& bytes) {
        logIn();
        play("box \"You need to upgrade QuorVantis\" OK\n");
        expectStarted();
        expectIdle();
        EXPECT_EQ(read(kSetup), bytes);
        std::remove((folder() + kStarted).c_str());
        waitUntil("the program to end", [this] { return std::remove((folder() + kSetup).c_str()) == 0; });
    };
    std::string date = "%20";
    for (const char* const useWinInet : {"0", "1"}) {
        SCOPED_TRACE(useWinInet);
        setConnection("UseWinInet", useWinInet);
        startControl(kUpgrade);
        breakOff();
        behave("7.2");
        goesOnAs(whole);
        breakOff();
        offerSetup(other); // the rest of this one is no good
        goesOnAs(other);
        static_cast<void>(heard());
        std::string expected;
        for (const char* const status : {"200", "206", "200", "200"}) {
            expected += "upgrade100 lastdate=" + date + "\nsetup.exe status=" + status + "\n";
            date = today();
        }
        EXPECT_EQ(requests(), expected);
    }
}

TEST_F(Updates, CancelEndsADownloadAndTheRun) {
    supplierIs(R"(<answer command="prices"><file filename="big.txt" webname="http://127.0.0.1:)" + peer("HTTP") +
               R"(/endless"/></answer><answer command="orders"/>)");
    startControl(std::string(kPrices) + "<command name='orders' show='yes' checked='yes'/>");
    logIn();
    play("wait frmQVI_sendreceive\nexpect-text lProgress \"Downloading big.txt, Please wait\"\n");
    EXPECT_EQ(heard(), "DownloadStart prices\r\nCancelled\r\nEND\r\n");
    EXPECT_FALSE(exists("files\\big.txt"));
    EXPECT_EQ(requests(), "prices lastdate=20200131\n");
}

} // namespace
} // namespace end_to_end
