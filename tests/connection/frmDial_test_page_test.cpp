// The connection test: what is fetched, what is shown of it, and how it ends.
#include "connection/frmDial_fixture.h"

namespace connection {
namespace {

using Kind = ports::HttpOutcome::Kind;

TEST_F(frmDialTest, ATestSavesFetchesAndShowsHeadersAndDataAsTheyCome) {
    store("UseWinInet", "1");
    store("UseProxy", "1");
    network.willAnswer(fakes::Answer{.body = {"caf\xC3", "\xA9\n\xE2\x82", "\xAC\xFF"},
                                     .headers = {{"Content-Type", "text/plain"}, {"X", ""}},
                                     .meanwhile = [&] {
                                         EXPECT_FALSE(form.cmdGet.enabled());
                                         EXPECT_EQ(form.txtTransfer.text(), "");
                                     }});
    showTestPage([&] {
        form.txtServer.setText("proxy.example");
        form.txtTransfer.setText("of the last test");
        form.cmdGet.userClick();
        EXPECT_EQ(form.txtURL.text(), "http://supplier/test");
        EXPECT_EQ(form.txtTransfer.text(), "http header: Content-Type: text/plain\r\nhttp header: X: \r\n"
                                           "caf\xC3\xA9\n\xE2\x82\xAC\xFF");
        EXPECT_TRUE(form.cmdGet.enabled());
    });
    EXPECT_EQ(stored("ProxyServer"), "proxy.example");
    const ports::HttpRequest& request = network.requests.at(0);
    EXPECT_EQ(request.url, "http://supplier/test");
    EXPECT_EQ(request.method, ports::HttpRequest::Method::Get);
    EXPECT_EQ(request.settings.proxyServer, "proxy.example");
    EXPECT_TRUE(request.useWinInet);
    EXPECT_EQ(log, (Lines{"Sub HTTP Settings --> Start", "Type 0", "Sub SetHTTPSettings --> end"}));
}

TEST_F(frmDialTest, EventsAreShownInBoxesToWhoWantsThem) {
    const auto fail = [&](Kind kind, std::int32_t code, const char* description) {
        network.willAnswer(fakes::Answer{.kind = kind, .code = code, .description = description});
    };
    showTestPage([&] {
        form.txtURL.userText(" http://other/a b ");
        fail(Kind::Failed, 6, "Could not resolve host");
        form.userFocus(form.txtURL);
        EXPECT_EQ(form.userKey(ui::key::kReturn), 0); // fetches, too
        EXPECT_EQ(form.txtTransfer.text(), "");
        EXPECT_TRUE(form.cmdGet.enabled());

        form.chkEvents.userClick();
        fail(Kind::Failed, 6, "Could not resolve host");
        desktop.whenAsked("HTTPS1_Error\r\nErrorCode=20006\r\nDescription=Could not resolve host");
        form.cmdGet.userClick();
        network.willAnswer("page");
        desktop.whenAsked("HTTPS1_Disconnected\r\nStatusCode=0\r\nDescription=");
        form.cmdGet.userClick();

        store("ProxyPort", "");
        form.chkProxy.setChecked(true);
        form.txtPort.setText("none");
        network.willAnswer("page");
        desktop.whenAsked("Error in SetHTTPSettings:Type mismatch");
        desktop.whenAsked("HTTPS1_Disconnected\r\nStatusCode=0\r\nDescription=");
        form.cmdGet.userClick();

        desktop.whenAsked("WinsockInfo=Fake sockets 2.0\r\nWinsockLoaded=True\r\nWinsockMaxDatagramSize=65467\r\n"
                          "WinsockMaxSockets=32767\r\nWinsockPath=C:\\windows\\system32\\ws2_32.dll\r\n"
                          "WinsockStatus=Running");
        form.cmdWinsock.userClick();
        EXPECT_EQ(desktop.lastTitle(), "WinSock info");
    });
    EXPECT_EQ(network.requests.at(0).url, "http://other/a%20b");
}

TEST_F(frmDialTest, ClosingTheFormEndsTheTestAtOnceWithoutABox) {
    for (const bool ok : {false, true}) {
        network.willAnswer(fakes::Answer{.body = {"never seen"}, .meanwhile = [&] {
                                             if (ok) {
                                                 form.cmdOK.userClick();
                                             } else {
                                                 form.userClose();
                                             }
                                             EXPECT_FALSE(form.shown());
                                         }});
        showTestPage([&] {
            form.chkEvents.setChecked(true);
            form.cmdGet.userClick();
        });
        EXPECT_EQ(form.Cancelled, !ok);
        EXPECT_EQ(form.txtTransfer.text(), "");
    }
    showTestPage([&] { EXPECT_TRUE(form.cmdGet.enabled()); });
}

TEST_F(frmDialTest, AVeryLongAnswerIsCutBetweenCharactersAndSaysSo) {
    const std::string_view kEuro = "\xE2\x82\xAC";
    std::string block;
    for (int i = 0; i < 100'000; ++i) {
        block += kEuro;
    }
    network.willAnswer(fakes::Answer{.body = Lines(50, block)});
    showTestPage([&] { form.cmdGet.userClick(); });
    const std::string& text = form.txtTransfer.text();
    const std::size_t lastLine = text.rfind("\r\n");
    EXPECT_EQ(lastLine, TransferText::kLimit / kEuro.size() * kEuro.size());
    EXPECT_EQ(text.substr(lastLine), "\r\n(There is more than 4 MB; the rest is not shown.)");
}

} // namespace
} // namespace connection
