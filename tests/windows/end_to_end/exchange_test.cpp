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

TEST_F(Exchange, AllLinksAndTheProductGroupsReachTheSupplier) {
    write("images.xml", R"(<images><p f1="A" f2="a.jpg"/><p f1="B" f2="b.jpg" f3="deleted"/></images>)");
    startHost({"GEAR"});
    link("c.jpg");
    play(R"(
        click cmdUpload
        wait frmQVI_sendreceive
        key Space Down Space
        expect lvCommands "-sendimagelinks210|Send image link modifications to server|| " "+SendImageLinksAll210|Overwrite image links on server|| "
        key Enter
        wait frmLogin
        type txtPassword secret
        key Enter
    )");
    expectCompleted();
    expectSent("c.jpg");
    EXPECT_EQ(read("images.xml"), R"(<images><p f1="A" f2="a.jpg"/><p f1="GEAR" f2="c.jpg"/></images>)");
    EXPECT_THAT(supplierHas(), testing::AllOf(HasSubstr("a.jpg"), testing::Not(HasSubstr("b.jpg"))));

    const std::string groups = R"(<productgroups><g name="Gears &amp; more"><p>GEAR</p></g></productgroups>)";
    write("productgroups.xml", groups);
    markProductGroups();
    play(R"(
        wait frmQVI_Images
        click cmdUpload
        wait frmQVI_sendreceive
        expect lvCommands "-SendImageLinksAll210|Overwrite image links on server|| " "+sendproductgroups210|Send product groups to server|| "
    )");
    sendAgain();
    expectCompleted();
    leave();
    EXPECT_THAT(supplierHas("productgroups-1001.xml"), HasSubstr(groups));
    EXPECT_FALSE(productGroupsMarked());
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
