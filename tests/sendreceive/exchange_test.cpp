// One exchange, asked for through the control, with servers that answer as the test says.
#include "base/runtime_error.h"
#include "login/frmMsgBox.h"
#include "sendreceive/control_fixture.h"

#include <utility>

namespace sendreceive {
namespace {

using fakes::Answer;
using Kind = ports::HttpOutcome::Kind;

const Answer kNobody{{}, 0, "", {}, Kind::ConnectFailed, 7, "Could not connect to server"};
const Answer kNoName{{}, 0, "", {}, Kind::Failed, 6, "Could not resolve host"};

class ExchangeTest : public ControlFixture {
protected:
    ExchangeTest() {
        services.files.addFolder("C:\\QV");
        control->sWebAddress = "http://supplier/a b";
        setting("Dialup", "DialType", "Manual");
        EXPECT_TRUE(command->load("<commands password='SECRET'><command name='Ret_sendorders130'/></commands>"));
    }
    void setting(std::string_view section, std::string_view key, std::string_view value) {
        services.settings.set("Shop", section, key, value);
    }
    void alternate() { setting("http://supplier/", "AltURL", "http://other/"); }
    bool post() { return control->SendReceive(control->sWebAddress, "POST", results, command, "", false, false); }
    bool post(Answer answer) {
        services.network.willAnswer(std::move(answer));
        return post();
    }
    bool fetch(const std::string& url) {
        std::string address = url;
        return control->SendReceive(address, "GET", nullptr, nullptr, "C:\\QV\\f.zip", true, false);
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
    // The trace without the times.
    [[nodiscard]] std::string trace() const {
        std::string lines;
        const std::string text = services.files.contents("C:\\QV\\quorvantis_sendreceive.txt");
        for (std::size_t at = 0; at < text.size();) {
            const std::size_t end = text.find("\r\n", at);
            const std::size_t comma = text.find(',', at);
            lines += text.substr(comma < end ? comma + 1 : at, end - (comma < end ? comma + 1 : at)) + "\n";
            at = end + 2;
        }
        return lines;
    }
    [[nodiscard]] std::vector<std::string> urls() const {
        std::vector<std::string> result;
        for (const ports::HttpRequest& request : services.network.requests) {
            result.push_back(request.url);
        }
        return result;
    }

    std::shared_ptr<xml::XmlDocument> results = std::make_shared<xml::XmlDocument>();
    std::shared_ptr<xml::XmlDocument> command = std::make_shared<xml::XmlDocument>();
};

constexpr const char* kAll = "Cancel|Dial Settings|User Settings|";

TEST_F(ExchangeTest, ACommandIsPostedAndItsAnswerLoaded) {
    EXPECT_TRUE(post({{"<?xml version='1.0' encoding='iso-8859-1'?><results>caf\xE9", "</results>"}}));
    const ports::HttpRequest& request = services.network.requests.at(0);
    EXPECT_EQ(request.method, ports::HttpRequest::Method::Post);
    EXPECT_EQ(request.url, "http://supplier/a%20b");
    EXPECT_EQ(request.body, "<commands password=\"SECRET\"><command name=\"sendorders130\" lastdate=\"\"/></commands>");
    EXPECT_EQ(request.timeout, std::chrono::seconds(600));
    EXPECT_EQ(control->sWebAddress, "http://supplier/a%20b");
    EXPECT_EQ(results->documentElement().text(), "caf\xC3\xA9");
    EXPECT_EQ(control->barProgress.barWidth(), ui::FramedBar::kFrameWidth);
    EXPECT_EQ(trace(), "Sub SendReceive --> Set variables\n"
                       "Sub SendReceive --> SendCommand\n"
                       "<commands password=\"***\"><command name=\"Ret_sendorders130\" lastdate=\"\"/></commands>\n"
                       "Sub SendReceive --> Set xml\n"
                       "Sub SendReceive --> Set URL:http://supplier/a%20b\n"
                       "Sub SendReceive --> Set proxy\n"
                       "Sub HTTP Settings --> Start\n"
                       "Sub SetHTTPSettings --> end\n"
                       "Sub SendReceive --> Post or Get:POST\n"
                       "Sub SendReceive --> Post error code: 0\n"
                       "Sub SendReceive: Load results to dom\n"
                       "Sub SendReceive: Check for errors in results\n"
                       "Sub SendReceive: Check for file downloads\n"
                       "Sub SendReceive: SendReceive = true\n");
}

TEST_F(ExchangeTest, AnAnswerThatIsNoneIsKeptAndReported) {
    const std::string file = "C:\\QV\\errors\\20261115_190812.html";
    for (const std::string answer :
         {"", "<p>not XML", "<!DOCTYPE html><html/>", "<a/> and more", "<x:HTML xmlns:x='y'/>"}) {
        services.desktop.whenAsked("Error 002: Could not connect to server. Please report: " + file);
        EXPECT_FALSE(post({{answer}}));
        EXPECT_EQ(services.files.contents(file), answer + "\r\n");
    }
    services.desktop.whenAsked("Wrong password");
    EXPECT_FALSE(post({{"<results><error>Wrong password</error></results>"}}));
    services.desktop.whenAsked("Back at 5");
    EXPECT_FALSE(post({{"<SYSDOWN><message>Back at 5</message></SYSDOWN>"}, 503, "Service Unavailable"}));
    EXPECT_TRUE(trace().ends_with("System is currently off\nMessage received back: 'Back at 5'\n"));
}

TEST_F(ExchangeTest, TheAlternateAddressIsAskedForOnce) {
    alternate();
    services.desktop.whenAsked("Could not connect, do you want to use the alternate web address?", ui::Answer::Yes);
    services.network.willAnswer(kNobody);
    services.network.willAnswer(kNobody);
    whenTold("System error on suppliers side, please contact and give them this filename:  C:\\QV\\errors\\", "Cancel|",
             "Cancel");
    EXPECT_FALSE(post());
    EXPECT_EQ(urls(), (Rows{"http://supplier/a%20b", "http://other/"}));
    EXPECT_EQ(control->sWebAddress, "http://other/");
    EXPECT_TRUE(services.files.folderExists("C:\\QV\\Error"));

    // Ticked: the first request goes there.
    services.network.requests.clear();
    control->sWebAddress = "http://supplier/";
    control->cAlternate.setVisible(true);
    control->cAlternate.userClick();
    EXPECT_TRUE(post({{"<a/>"}}));
    EXPECT_EQ(urls(), Rows{"http://other/"});

    // Declined, and a file's own address.
    services.network.requests.clear();
    control->cAlternate.userClick();
    control->sWebAddress = "http://supplier/";
    services.desktop.whenAsked("Could not connect, do you want to use the alternate web address?", ui::Answer::No);
    whenTold("System error", "Cancel|", "");
    EXPECT_FALSE(post(kNobody));
    services.network.willAnswer(kNobody);
    whenTold("System error", "Cancel|", "");
    EXPECT_FALSE(fetch("http://supplier/f.zip"));
}

TEST_F(ExchangeTest, AWrongProxyIsPutRightOnTheWay) {
    setting("Dialup", "UseProxy", "1");
    setting("Dialup", "FirewallType", "0");
    setting("Dialup", "ProxyServer", "wrong");
    services.network.willAnswer({{"<h1>Proxy AUTHENTICATION required</h1>"}, 407, "Proxy Authentication Required"});
    whenTold("Authorisation error returned. This is most likely from your proxy server.", kAll, "Dial Settings");
    services.desktop.whenShown("frmDial", [this] {
        auto& form = dynamic_cast<connection::frmDial&>(*services.desktop.shownForm());
        EXPECT_FALSE(form.DialMode);
        form.txtServer.userText("right");
        form.cmdOK.userClick();
    });
    services.network.willAnswer({{"<h1>404</h1>"}, 404, "Not Found"});
    whenTold("Error while connecting to [http://supplier/a%20b]. Please contact your supplier.\r\n\r\n"
             "(HTTP protocol error. 404 Not Found)",
             kAll, "User Settings");
    EXPECT_TRUE(post({{"<a/>"}}));
    EXPECT_EQ(services.network.requests.at(0).settings.proxyServer, "wrong");
    EXPECT_EQ(services.network.requests.at(2).settings.proxyServer, "right");
    EXPECT_EQ(listener.heard, Rows{"OpenfrmOptions http://supplier/a%20b"});
}

TEST_F(ExchangeTest, WithoutANetworkTheUserDialsByHandOrTheControlDoes) {
    const std::string please =
        "Could not connect to your supplier, please dial up to the internet manually, then try send/receive again"
        "\r\n\r\n(Could not resolve host)";
    services.network.willAnswer(kNoName);
    whenTold(please, kAll, "User Settings");
    services.network.willAnswer(kNoName);
    whenTold(please, kAll, "Cancel");
    EXPECT_FALSE(post());
    EXPECT_NE(trace().find("20006start Error, but manualCould not resolve host\n"
                           "Sub SendReceive --> End Error, but manual: 20006Could not resolve host\n"),
              std::string::npos);

    setting("Dialup", "DialType", "DialUp");
    services.network.phoneBook = {"Work"};
    services.network.willAnswer(kNoName);
    services.desktop.whenShown("frmDial", [this] {
        auto& form = dynamic_cast<connection::frmDial&>(*services.desktop.shownForm());
        EXPECT_TRUE(form.DialMode);
        form.lPhonebook.userSelect(0);
        form.bPhoneBookConnect.userClick();
        services.network.connect();
    });
    services.network.willAnswer(kNoName);
    services.desktop.whenShown("frmDial", [this] { services.desktop.shownForm()->userClose(); });
    EXPECT_FALSE(post());
    EXPECT_EQ(services.network.dialled, Rows{"Work"});
    EXPECT_TRUE(services.network.connected) << "a connection outlives the form that made it";
    control->DisconnectFromInternet();
    EXPECT_FALSE(services.network.connected);
}

TEST_F(ExchangeTest, CancelEndsItWithoutADialogue) {
    const auto cancel = [this] { control->cmdCancel.userClick(); };
    EXPECT_FALSE(post({{"<a/>"}, 200, "OK", {}, Kind::Answered, 0, "", cancel}));
    EXPECT_TRUE(trace().ends_with("Post error code: 20042The operation was cancelled.\nCancelled\n"));
    EXPECT_EQ(listener.heard, Rows{"Cancelled"});

    // As the connection fails: the transport has its outcome already.
    services.desktop.atDoEvents(1, [this] { control->gCancelled = true; });
    EXPECT_FALSE(post(kNobody));
}

TEST_F(ExchangeTest, AnotherOneInTheMiddleOnlyLeavesATrace) {
    bool nested = true;
    EXPECT_TRUE(
        post({{"<a/>"}, 200, "OK", {}, Kind::Answered, 0, "", [&] { nested = fetch("http://supplier/f.zip"); }}));
    EXPECT_FALSE(nested);
    EXPECT_NE(trace().find("Sub SendReceive: busy\n"), std::string::npos);
}

TEST_F(ExchangeTest, AFileIsFetchedIntoItsPlace) {
    services.network.willAnswer("file");
    EXPECT_TRUE(fetch("http://supplier/f.zip"));
    EXPECT_EQ(services.files.contents("C:\\QV\\f.zip"), "file");
    EXPECT_NE(trace().find("C:\\QV\\f.zipSub SendReceive --> Set local files:\n"), std::string::npos);

    services.network.willAnswer("");
    services.desktop.whenAsked("Error 001: Error from supplier server, please report this error to your supplier");
    EXPECT_TRUE(fetch("http://supplier/f.zip"));
    services.desktop.whenAsked("Error 001: Error from supplier server, please report this error to your supplier");
    EXPECT_TRUE(control->DownloadFile("http://supplier/g.zip", "C:\\QV\\g.zip"));
    EXPECT_EQ(services.files.contents("C:\\QV\\f.zip"), "file");
    EXPECT_EQ(services.network.requests.size(), 2U);

    services.network.willAnswer({{"half"}, 200, "OK", {}, Kind::Failed, 18, "4 bytes missing"});
    services.desktop.whenAsked("Error in download : 4 bytes missing");
    whenTold("Could not connect to your supplier", kAll, "Cancel");
    EXPECT_FALSE(fetch("http://supplier/f.zip"));
    EXPECT_EQ(services.files.contents("C:\\QV\\f.zip"), "file");
}

TEST_F(ExchangeTest, TheBarFollowsTheBytes) {
    std::vector<std::int32_t> widths;
    for (int n = 1; n <= 4; ++n) {
        services.desktop.atDoEvents(n, [&] { widths.push_back(control->barProgress.barWidth()); });
    }
    EXPECT_TRUE(post({{"<a>x", "</a>"}, 200, "OK", {{"Content-Length", "8"}}}));
    EXPECT_EQ(widths, (std::vector<std::int32_t>{0, 3000, 3000, ui::FramedBar::kFrameWidth - 30}));
}

} // namespace
} // namespace sendreceive
