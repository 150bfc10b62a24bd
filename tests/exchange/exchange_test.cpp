// One exchange, with servers that answer as the test says.
#include "exchange/engine_fixture.h"

#include <utility>

namespace exchange {
namespace {

using fakes::Answer;
using Kind = ports::HttpOutcome::Kind;
using Next = Dialogues::Next;

const Answer kNobody{{}, 0, "", {}, Kind::ConnectFailed, 7, "Could not connect to server"};
const Answer kNoName{{}, 0, "", {}, Kind::Failed, 6, "Could not resolve host"};

class ExchangeTest : public EngineFixture {
protected:
    ExchangeTest() {
        session.sWebAddress = "http://supplier/a b";
        EXPECT_TRUE(command->load("<commands password='SECRET'><command name='Ret_sendorders130'/></commands>"));
    }
    void alternate() { setting("http://supplier/", "AltURL", "http://other/"); }
    ExchangeResult post() {
        return engine.SendReceive(
            {.url = session.sWebAddress, .method = "POST", .results = answered, .command = command}, false);
    }
    bool post(Answer answer) {
        services.network.willAnswer(std::move(answer));
        return post().succeeded;
    }
    bool fetch(const std::string& url, const std::string& method = "GET") {
        return engine
            .SendReceive({.url = url, .method = method, .localFile = "C:\\QV\\f.zip", .dontLoadResults = true}, false)
            .succeeded;
    }

    std::shared_ptr<xml::XmlDocument> answered = std::make_shared<xml::XmlDocument>();
    std::shared_ptr<xml::XmlDocument> command = std::make_shared<xml::XmlDocument>();
};

TEST_F(ExchangeTest, ACommandIsPostedAndItsAnswerLoaded) {
    services.network.willAnswer(Answer{{"<?xml version='1.0' encoding='iso-8859-1'?><results>caf\xE9", "</results>"}});
    const ExchangeResult result = post();
    EXPECT_TRUE(result.succeeded);
    const ports::HttpRequest& request = services.network.requests.at(0);
    EXPECT_EQ(request.method, ports::HttpRequest::Method::Post);
    EXPECT_EQ(request.url, "http://supplier/a%20b");
    EXPECT_EQ(request.body, "<commands password=\"SECRET\"><command name=\"sendorders130\" lastdate=\"\"/></commands>");
    EXPECT_EQ(request.timeout, std::chrono::seconds(600));
    EXPECT_EQ(result.url, request.url);
    EXPECT_EQ(result.posted, request.body);
    EXPECT_EQ(answered->documentElement().text(), "caf\xC3\xA9");
    EXPECT_TRUE(watcher.lastTransfer.complete);
    EXPECT_EQ(watcher.traced,
              "Sub SendReceive --> Set variables\n"
              "Sub SendReceive --> SendCommand\r\n"
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
    const std::string kept = "C:\\QV\\errors\\20261115_190812.html";
    for (const std::string answer :
         {"", "<p>not XML", "<!DOCTYPE html><html/>", "<a/> and more", "<x:HTML xmlns:x='y'/>"}) {
        watcher.whenTold("Error 002: Could not connect to server. Please report: " + kept);
        EXPECT_FALSE(post({{answer}}));
        EXPECT_EQ(services.files.contents(kept), answer + "\r\n");
    }
    watcher.whenTold("Wrong password");
    EXPECT_FALSE(post({{"<results><error>Wrong password</error></results>"}}));
    watcher.whenTold("Back at 5");
    EXPECT_FALSE(post({{"<SYSDOWN><message>Back at 5</message></SYSDOWN>"}, 503, "Service Unavailable"}));
    EXPECT_TRUE(watcher.traced.ends_with("System is currently off\nMessage received back: 'Back at 5'\n"));
}

TEST_F(ExchangeTest, TheAlternateAddressIsAskedForOnce) {
    alternate();
    services.network.willAnswer(kNobody);
    services.network.willAnswer(kNobody);
    watcher.whenAlternate(true);
    watcher.whenFailing(
        "System error on suppliers side, please contact and give them this filename:  C:\\QV\\errors\\");
    EXPECT_EQ(post().url, "http://other/");
    EXPECT_EQ(urls(), (Rows{"http://supplier/a%20b", "http://other/"}));
    EXPECT_EQ(session.sWebAddress, "http://other/");
    EXPECT_TRUE(session.gUsingAlternate);
    EXPECT_TRUE(services.files.folderExists("C:\\QV\\Error"));

    // Asked for from the start: the first request goes there.
    services.network.requests.clear();
    session.sWebAddress = "http://supplier/";
    session.bAlternate = true;
    EXPECT_TRUE(post({{"<a/>"}}));
    EXPECT_EQ(urls(), Rows{"http://other/"});

    // Declined, and a file's own address.
    session.bAlternate = false;
    session.sWebAddress = "http://supplier/";
    watcher.whenAlternate(false);
    watcher.whenFailing("System error");
    EXPECT_FALSE(post(kNobody));
    services.network.willAnswer(kNobody);
    watcher.whenFailing("System error");
    EXPECT_FALSE(fetch("http://supplier/f.zip"));
}

TEST_F(ExchangeTest, WhatIsPutRightMeanwhileCountsForTheNextTry) {
    setting("Dialup", "UseProxy", "1");
    setting("Dialup", "FirewallType", "0");
    setting("Dialup", "ProxyServer", "wrong");
    services.network.willAnswer({{"<h1>Proxy AUTHENTICATION required</h1>"}, 407, "Proxy Authentication Required"});
    watcher.whenFailing("Authorisation error returned. This is most likely from your proxy server.", Next::Repeat, [&] {
        EXPECT_TRUE(watcher.lastFailure.settingsMayHelp());
        setting("Dialup", "ProxyServer", "right");
    });
    services.network.willAnswer({{"<h1>404</h1>"}, 404, "Not Found"});
    watcher.whenFailing("Error while connecting to [http://supplier/a%20b]. Please contact your supplier.\r\n\r\n"
                        "(HTTP protocol error. 404 Not Found)",
                        Next::Repeat, [&] { session.sWebAddress = "http://moved/"; });
    EXPECT_TRUE(post({{"<a/>"}}));
    EXPECT_EQ(urls(), (Rows{"http://supplier/a%20b", "http://supplier/a%20b", "http://moved/"}));
    EXPECT_EQ(services.network.requests.at(0).settings.proxyServer, "wrong");
    EXPECT_EQ(services.network.requests.at(2).settings.proxyServer, "right");
}

TEST_F(ExchangeTest, WithoutANetworkTheUserDialsByHandOrTheProgramDoes) {
    const std::string please =
        "Could not connect to your supplier, please dial up to the internet manually, then try send/receive again"
        "\r\n\r\n(Could not resolve host)";
    services.network.willAnswer(kNoName);
    watcher.whenFailing(please, Next::Repeat, [&] { EXPECT_TRUE(watcher.lastFailure.settingsMayHelp()); });
    services.network.willAnswer(kNoName);
    watcher.whenFailing(please);
    EXPECT_FALSE(post().succeeded);
    EXPECT_NE(watcher.traced.find("20006start Error, but manualCould not resolve host\n"
                                  "Sub SendReceive --> End Error, but manual: 20006Could not resolve host\n"),
              std::string::npos);

    setting("Dialup", "DialType", "DialUp");
    services.network.willAnswer(kNoName);
    watcher.whenDialling(true);
    services.network.willAnswer(kNoName);
    watcher.whenDialling(false);
    EXPECT_FALSE(post().succeeded);
    EXPECT_NE(watcher.traced.find("20006Start ELSE Error, but try dial upCould not resolve host\n"
                                  "Sub SendReceive --> End Error, but auto dial: 20006Could not resolve host\n"),
              std::string::npos);
}

TEST_F(ExchangeTest, CancelEndsItWithoutAQuestion) {
    EXPECT_FALSE(post({{"<a/>"}, 200, "OK", {}, Kind::Answered, 0, "", [this] { engine.cancel(); }}));
    EXPECT_TRUE(watcher.traced.ends_with("Post error code: 20042The operation was cancelled.\nCancelled\n"));
    EXPECT_EQ(watcher.heard, Rows{"disconnect"});

    // As the connection fails: the transport has its outcome already.
    watcher.atIdle(1, [this] { session.gCancelled = true; });
    EXPECT_FALSE(post(kNobody));
}

TEST_F(ExchangeTest, AnotherOneInTheMiddleOnlyLeavesATrace) {
    bool nested = true;
    EXPECT_TRUE(
        post({{"<a/>"}, 200, "OK", {}, Kind::Answered, 0, "", [&] { nested = fetch("http://supplier/f.zip"); }}));
    EXPECT_FALSE(nested);
    EXPECT_NE(watcher.traced.find("Sub SendReceive: busy\n"), std::string::npos);
}

TEST_F(ExchangeTest, AFileIsFetchedIntoItsPlace) {
    const std::string none = "Error 001: Error from supplier server, please report this error to your supplier";
    services.network.willAnswer("file");
    EXPECT_TRUE(fetch("http://supplier/f.zip"));
    EXPECT_EQ(contents("C:\\QV\\f.zip"), "file");
    EXPECT_NE(watcher.traced.find("C:\\QV\\f.zipSub SendReceive --> Set local files:\n"), std::string::npos);

    services.network.willAnswer("");
    watcher.whenTold(none);
    EXPECT_TRUE(fetch("http://supplier/f.zip"));
    watcher.whenTold(none);
    EXPECT_TRUE(fetch("http://supplier/f.zip", "1")) << "nothing is asked";
    EXPECT_EQ(contents("C:\\QV\\f.zip"), "file");
    EXPECT_EQ(services.network.requests.size(), 2U);

    services.network.willAnswer({{"half"}, 200, "OK", {}, Kind::Failed, 18, "4 bytes missing"});
    watcher.whenTold("Error in download : 4 bytes missing");
    watcher.whenFailing("Could not connect to your supplier");
    EXPECT_FALSE(fetch("http://supplier/f.zip"));
    EXPECT_EQ(contents("C:\\QV\\f.zip"), "file");
}

TEST_F(ExchangeTest, TheWatcherHearsHowFarTheBytesAre) {
    EXPECT_TRUE(post({{"<a>x", "</a>"}, 200, "OK", {{"Content-Length", "16"}}}));
    EXPECT_EQ(watcher.lastTransfer.bytes, 8);
    EXPECT_EQ(watcher.lastTransfer.total, 16);
    for (const std::string length : {"", "x", "-1", "0", "1e20"}) {
        EXPECT_TRUE(post({{"<a/>"}, 200, "OK", {{"Content-Length", length}}}));
        EXPECT_EQ(watcher.lastTransfer.total, std::nullopt) << length;
    }
}

} // namespace
} // namespace exchange
