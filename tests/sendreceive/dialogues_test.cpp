// What the control asks the person when an exchange cannot go on by itself.
#include "login/frmMsgBox.h"
#include "sendreceive/control_fixture.h"

#include <utility>

namespace sendreceive {
namespace {

using fakes::Answer;
using Kind = ports::HttpOutcome::Kind;

const Answer kNobody{{}, 0, "", {}, Kind::ConnectFailed, 7, "Could not connect to server"};
const Answer kNoName{{}, 0, "", {}, Kind::Failed, 6, "Could not resolve host"};
constexpr const char* kAll = "Cancel|Dial Settings|User Settings|";

class DialoguesTest : public ControlFixture {
protected:
    DialoguesTest() {
        services.files.addFolder("C:\\QV");
        control->session.sWebAddress = "http://supplier/";
        setting("DialType", "Manual");
    }
    void setting(std::string_view key, std::string_view value) { services.settings.set("Shop", "Dialup", key, value); }
    bool post() {
        return control->SendReceive(control->session.sWebAddress, "POST", std::make_shared<xml::XmlDocument>(), nullptr,
                                    "", false, false);
    }
    bool post(Answer answer) {
        services.network.willAnswer(std::move(answer));
        return post();
    }
    // The message form shows this text and these captions, and is left by the button with that caption; "" closes it.
    void whenTold(const std::string& begin, const std::string& captions, const std::string& press) {
        services.desktop.whenShown("frmMsgBox", [this, begin, captions, press] {
            auto& form = dynamic_cast<login::frmMsgBox&>(*services.desktop.shownForm());
            EXPECT_TRUE(form.lblMessage.text().starts_with(begin)) << form.lblMessage.text();
            std::string shown;
            ui::Button* pressed = nullptr;
            for (ui::Button* const button : {&form.cmdButton1, &form.cmdButton2, &form.cmdButton3}) {
                shown += button->visible() ? button->text() + "|" : "";
                pressed = button->text() == press && !press.empty() ? button : pressed;
            }
            EXPECT_EQ(shown, captions);
            pressed != nullptr ? pressed->userClick() : form.userClose();
        });
    }
    void whenDialling(std::function<void(connection::frmDial&)> action) {
        services.desktop.whenShown("frmDial", [this, action = std::move(action)] {
            action(dynamic_cast<connection::frmDial&>(*services.desktop.shownForm()));
        });
    }
    void dials() {
        services.network.phoneBook = {"Work"};
        whenDialling([this](connection::frmDial& form) {
            EXPECT_TRUE(form.DialMode);
            form.lPhonebook.userSelect(0);
            form.bPhoneBookConnect.userClick();
            services.network.connect();
        });
    }
};

TEST_F(DialoguesTest, SettingsArePutRightOnTheWay) {
    setting("UseProxy", "1");
    setting("FirewallType", "0");
    setting("ProxyServer", "wrong");
    services.network.willAnswer({{"<h1>Proxy AUTHENTICATION required</h1>"}, 407, "Proxy Authentication Required"});
    whenTold("Authorisation error returned. This is most likely from your proxy server.", kAll, "Dial Settings");
    whenDialling([](connection::frmDial& form) {
        EXPECT_FALSE(form.DialMode);
        form.txtServer.userText("right");
        form.cmdOK.userClick();
    });
    services.network.willAnswer({{"<h1>404</h1>"}, 404, "Not Found"});
    whenTold("Error while connecting to [http://supplier/]. Please contact your supplier.", kAll, "User Settings");
    EXPECT_TRUE(post({{"<a/>"}}));
    EXPECT_EQ(services.network.requests.at(2).settings.proxyServer, "right");
    EXPECT_EQ(listener.heard, Rows{"OpenfrmOptions http://supplier/"});
}

TEST_F(DialoguesTest, TheAlternateAddressIsOffered) {
    services.settings.set("Shop", "http://supplier/", "AltURL", "http://other/");
    services.desktop.whenAsked("Could not connect, do you want to use the alternate web address?", ui::Answer::No);
    whenTold("System error on suppliers side, please contact and give them this filename:  C:\\QV\\errors\\", "Cancel|",
             "");
    EXPECT_FALSE(post(kNobody));
    services.desktop.whenAsked("Could not connect, do you want to use the alternate web address?", ui::Answer::Yes);
    services.network.willAnswer(kNobody);
    EXPECT_TRUE(post({{"<a/>"}}));
    EXPECT_EQ(control->session.sWebAddress, "http://other/");

    control->session.sWebAddress = "http://supplier/";
    control->cAlternate.setVisible(true);
    control->cAlternate.userClick();
    EXPECT_TRUE(post({{"<a/>"}}));
    EXPECT_EQ(services.network.requests.back().url, "http://other/");
}

TEST_F(DialoguesTest, TheUserDialsByHandOrTheControlDoes) {
    services.network.willAnswer(kNoName);
    whenTold("Could not connect to your supplier, please dial up to the internet manually, then try send/receive again"
             "\r\n\r\n(Could not resolve host)",
             kAll, "Cancel");
    EXPECT_FALSE(post());

    setting("DialType", "DialUp");
    services.network.willAnswer(kNoName);
    dials();
    services.network.willAnswer(kNoName);
    whenDialling([](connection::frmDial& form) { form.userClose(); });
    EXPECT_FALSE(post());
    EXPECT_EQ(services.network.dialled, Rows{"Work"});
    EXPECT_TRUE(services.network.connected) << "a connection outlives the form that made it";
    control->DisconnectFromInternet();
    EXPECT_FALSE(services.network.connected);
}

TEST_F(DialoguesTest, ALineThatWasDialledHereIsOfferedToBeHungUp) {
    control->session.bLoginNotRequired = true;
    load("<commands><command name='a' checked='yes' show='yes'/></commands>");
    setting("DialType", "DialUp");
    services.network.willAnswer(kNoName);
    dials();
    services.network.willAnswer("<results/>");
    services.desktop.whenAsked("Do you want to disconect from the internet?", ui::Answer::Yes);
    control->cmdOK.userClick();
    EXPECT_FALSE(services.network.connected);
    EXPECT_EQ(listener.heard.back(), "SendReceiveCompleted");
}

TEST_F(DialoguesTest, AnUpgradeIsAnnounced) {
    services.files.addFile("C:\\quorvantissetup.exe", "MZ");
    host->addProperty("gBusyWithUpgrade", false);
    services.desktop.whenAsked("A. You need to upgrade QuorVantis: \r\n  1) Press OK to start the upgrade.\r\n"
                               "  2) When the upgrade is complete QuorVantis will re-start.");
    control->RunSetup();
    EXPECT_EQ(services.programs.started, Rows{"C:\\\\QuorVantisSetup.exe"});

    // A library among the files: the host may register it.
    services.network.willAnswer("dll");
    auto results = std::make_shared<xml::XmlDocument>();
    ASSERT_TRUE(results->loadXml("<results><file filename='a.dll'/></results>"));
    services.network.willAnswer("newer");
    EXPECT_TRUE(control->CheckForFileDownloads(results, true, "C:\\QV\\", false));
    EXPECT_TRUE(control->CheckForFileDownloads(results, true, "C:\\QV\\", false));
    EXPECT_THROW((void)control->DownloadUpgrade(nullptr, "QV", "C:\\"), base::RuntimeError);
    EXPECT_EQ(listener.heard, (Rows{"RegisterServer C:\\QV\\files\\a.dll", "UnregisterServer C:\\QV\\files\\a.dll",
                                    "RegisterServer C:\\QV\\files\\a.dll"}));
    control->cDownloadFiles.setVisible(true);
    control->cDownloadFiles.userClick(); // "Do not download files"
    EXPECT_TRUE(control->CheckForFileDownloads(results, true, "C:\\QV\\", true));
    services.desktop.whenAsked("Error 001: Error from supplier server, please report this error to your supplier");
    EXPECT_TRUE(control->DownloadFile("http://supplier/g.zip", "C:\\QV\\g.zip")) << "asks for nothing";
}

} // namespace
} // namespace sendreceive
