// Whole exchanges with a web service that works, refuses, or takes its time, in a host's process.
#include "windows/end_to_end/upload.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;

using Exchange = Upload;

TEST_F(Exchange, TheLinksReachTheSupplierAndTheMarksGo) {
    upload();
    expectCompleted();
    leave();
    expectSent();
    const std::string trace = read("quorvantis_sendreceive.txt");
    EXPECT_THAT(trace, HasSubstr(R"(password="***")"));
    EXPECT_THAT(trace, HasSubstr("Sub SendReceive --> Post error code: 0\r\n"));
    EXPECT_THAT(trace, testing::Not(HasSubstr("SECRET")));
    EXPECT_THAT(trace, HasSubstr("Sub cmdOK_Click --> End of sendimagelinks210\r\n"));
}

TEST_F(Exchange, WhatTheSupplierRefusesStaysMarked) {
    setSupplierBehaviour(R"(<behaviour><fail command="sendimagelinks210" error="Not today."/></behaviour>)");
    upload();
    EXPECT_EQ(expectBox("Not today."), "");
    setSupplierBehaviour(R"(<behaviour><off message="Back at noon."/></behaviour>)");
    sendAgain();
    EXPECT_EQ(expectBox("Back at noon."), "");
    play("key Escape");
    leave();
    expectStillToBeSent();
}

TEST_F(Exchange, AWrongProxyIsPutRightInTheMiddleOfIt) {
    setConnection("UseProxy", "1");
    setConnection("FirewallType", "0");
    setConnection("ProxyServer", "proxy.invalid");
    upload();
    play(R"(
        wait frmMsgBox
        expect-text cmdButton2 "Dial Settings"
        click cmdButton2
        wait frmDial
        expect txtServer proxy.invalid
        type txtServer localhost
        type txtPort )" +
         peer("PROXY") + R"(
        click cmdOK
    )");
    expectCompleted();
    leave();
    expectSent();
    EXPECT_EQ(connection("ProxyServer"), "localhost");
}

} // namespace
} // namespace end_to_end
