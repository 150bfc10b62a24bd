// The connection settings in a host's process, and their test page against real servers: the peers that are started
// around this program.
#include "windows/end_to_end/upload.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

class Settings : public Shop {
protected:
    Settings() { setConnection("DialType", "Proxy"); }

    // Opens the settings, with this path of the byte peer as what is to be tested.
    void open(const std::string& path) {
        startScript("connection_settings.js", "EndToEnd http://localhost:" + peer("HTTP") + path);
        play("wait frmDial\nkey Alt+T\n");
    }
    void ends(const std::string& how) { EXPECT_EQ(hostEnds(), how + "\r\nEND\r\n"); }
};

TEST_F(Settings, ATestShowsHeadersAndDataThroughTheWayThatWasSet) {
    open("/ok");
    const std::string shown = "http header: Content-Length: 11{n}http header: Content-Type: text/plain{n}"
                              "http header: X-Twice: one{n}http header: x-twice: two{n}all is well";
    play("click cmdGet\nexpect-text txtTransfer \"" + shown + "\"\nexpect-enabled cmdGet\n");
    play(R"(
        key Alt+P
        check chkProxy on
        select comType "SOCKS Version 5"
        expect txtPort 1080
        type txtServer localhost
        type txtUserID me
        type txtPassword se:cret
        type txtPort )" +
         peer("SOCKS5_LOGIN") + R"(
        key Alt+T
        click cmdGet
        expect-text txtTransfer ")" +
         shown + R"("
        click cmdOK
    )");
    ends("accepted true");
    EXPECT_EQ(connection("UseProxy") + connection("FirewallType") + connection("ProxyServer"), "12localhost");
    EXPECT_EQ(connection("ProxyPassword"), "se:cret");
}

TEST_F(Settings, WhatGoesWrongIsToldToWhoAsksForIt) {
    open("/404");
    play(R"(
        check chkEvents on
        click cmdGet
        box "HTTPS1_Disconnected{n}StatusCode=20152{n}Description=HTTP protocol error. 404 Not Here" OK
        box "HTTPS1_Error{n}ErrorCode=20152{n}Description=HTTP protocol error. 404 Not Here" OK
        type txtURL "https://localhost:)" +
         peer("UNKNOWN") + R"(/ok"
        click cmdGet
        box "HTTPS1_Error{n}ErrorCode=20060{n}" OK
        type txtURL "http://localhost:)" +
         peer("REFUSED") + R"(/"
        click cmdGet
        box "HTTPS1_Error{n}ErrorCode=20152{n}" OK
        expect-enabled cmdGet
        click cmdWinsock
        box "WinsockLoaded=True{n}" OK "WinSock info"
        key Escape
    )");
    ends("accepted false");
}

TEST_F(Settings, AServerThatNeverAnswersOrNeverEndsLetsTheUserLeave) {
    for (const std::string path : {"/silent", "/endless"}) {
        open(path);
        play(R"(
            click cmdGet
            expect-disabled cmdGet
            key Escape
            wait-closed frmDial 3
        )");
        ends("accepted false");
    }
    EXPECT_EQ(connection("UseProxy"), "0") << "what is tested is stored";
}

} // namespace
} // namespace end_to_end
