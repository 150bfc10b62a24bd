// Runs of a host that has its own commands, globals and settings document (tests/windows/control_host), with a real
// service: what the component's own window never asks of the control.
#include "windows/end_to_end/own_host.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;
using testing::Not;

class OwnCommands : public OwnHost {};

TEST_F(OwnCommands, AccountsFailQuietlyAndEveryCommandKeepsItsDate) {
    supplierIs(R"(<answer command="prices"/><fail command="getaccount400" error="No such account."/>)");
    startControl(
        "<command name='getaccount400' show='yes' displaytext='Account' required='yes'/>"
        "<command name='prices' show='yes' displaytext='Prices' checked='yes'/>"
        "<command name='orders' show='yes' displaytext='Orders' checked='yes' lastdateaccountspecific='yes'/>");
    play(R"(expect lvCommands "+getaccount400|Account| | " "+prices|Prices|20200131| " "+orders|Orders| | ")");
    logIn();
    play(R"(
        box "No such account." OK
        wait frmQVI_sendreceive
        expect-enabled cmdOK
        expect lvCommands "+getaccount400|Account| |Busy" "+prices|Prices|20200131| " "+orders|Orders| | "
    )");
    supplierIs(R"(<redo command="prices" times="2"/><answer command="prices"/><answer command="orders"/>)");
    logIn();
    expectIdle();
    logIn();
    expectIdle();
    const std::string run = "DownloadStart getaccount400\r\nDownloadComplete getaccount400\r\nDownloadStart prices\r\n"
                            "DownloadComplete prices\r\nDownloadComplete prices\r\nDownloadComplete prices\r\n"
                            "DownloadStart orders\r\nDownloadComplete orders\r\nSendReceiveCompleted\r\n";
    EXPECT_EQ(heard(), "DownloadStart getaccount400\r\n" + run + run + "Cancelled\r\nEND\r\n");
    const auto requestsOf = [](const std::string& account, const std::string& prices, const std::string& orders) {
        return "getaccount400 lastdate=" + account + "\nprices lastdate=" + prices +
               " redo\nprices lastdate=" + prices + " redo\nprices lastdate=" + prices + "\norders lastdate=" + orders +
               "\n";
    };
    EXPECT_EQ(requests(), "getaccount400 lastdate=%20 error=No%20such%20account.\n" +
                              requestsOf("%20", "20200131", "%20") + requestsOf(today(), today(), today()));
    EXPECT_THAT(read("quorvantis.xml"),
                HasSubstr("<shop name=\"Mine\"/><accountdates prices=\"" + today() + "\" getaccount400=\"" + today() +
                          "\"><accountdate number=\"B04711\" orders=\"" + today() + "\"/></accountdates>"));
}

TEST_F(OwnCommands, ASampleHostSendsThroughTheControlOnItsOwnWindow) {
    startWindowHost();
    pressInWindowHost(L"OK");
    play("wait frmLogin\ntype txtPassword secret\nkey Enter\nhost-prints SendReceiveCompleted\n");
    pressInWindowHost(L"Cancel");
    EXPECT_EQ(hostEnds(), kCompleted);
    EXPECT_EQ(requests(), "prices lastdate=\n");
}

TEST_F(OwnCommands, TheAlternateAddressIsOfferedOnceAndCanBeTickedBefore) {
    setSetting("Supplier", "AltURL", webAddress);
    // A proxy that takes no connection is no hindrance: the alternate address is reached without it.
    goThrough("0", peer("REFUSED"));
    startControl(std::string(kPrices));
    play("expect-visible cAlternate\ncheck cAlternate on\n");
    logIn();
    expectIdle();
    EXPECT_EQ(heard(), kCompleted);

    setConnection("UseProxy", "0");
    webAddress = "http://127.0.0.1:" + peer("REFUSED") + "/";
    startControl(std::string(kPrices));
    logIn();
    play(R"(
        box "Could not connect, do you want to use the alternate web address?" Yes
        wait frmQVI_sendreceive
        expect-enabled cmdOK
    )");
    EXPECT_EQ(heard(), kCompleted);
    EXPECT_EQ(requests(), "prices lastdate=" + today() + "\n");
}

TEST_F(OwnCommands, APasswordThatIsOverdueIsChangedAtTheServer) {
    startControl(std::string(kPrices) + "<command name='orders' show='yes' checked='yes'/>",
                 "ForcePasswChange: 'True', PasswChangeDays: '-1'");
    logIn(); // from now on it is overdue
    expectIdle();
    play(R"(
        key Enter
        wait frmLogin
        expect chChangePassword on
        check chChangePassword off
        box "You are required to change your password now" OK
        type tnewpassword spring
        type tverifypassword spring
        key Enter
        wait frmQVI_sendreceive
        expect-enabled cmdOK
        expect lvCommands "+prices|Prices|20200131|Done" "+orders|| |Done"
    )");
    EXPECT_THAT(contentsOf(supplierFile("accounts.xml")), HasSubstr(R"(password="SPRING")"));
    EXPECT_THAT(read("quorvantis_sendreceive.txt"), Not(HasSubstr("SPRING")));
    static_cast<void>(heard());
}

TEST_F(OwnCommands, CancelAroundACommandSendsNoMore) {
    startControl("<command name='prices' show='yes' checked='yes' waits='before'/>");
    logIn();
    play("host-prints \"DownloadStart prices\"\n");
    EXPECT_EQ(heard(), "DownloadStart prices\r\nCancelled\r\nEND\r\n");
    EXPECT_EQ(requests(), "");

    startControl("<command name='prices' show='yes' checked='yes' waits='after'/>"
                 "<command name='orders' show='yes' checked='yes'/>");
    logIn();
    play("host-prints \"DownloadComplete prices\"\n");
    const std::string events = heard();
    EXPECT_THAT(events, HasSubstr("DownloadComplete prices\r\nCancelled\r\n"));
    EXPECT_THAT(events, Not(HasSubstr("SendReceiveCompleted")));
    EXPECT_EQ(requests(), "prices lastdate=20200131\n");
    EXPECT_THAT(read("quorvantis.xml"), HasSubstr("<accountdates prices=\"" + today() + "\"/>"));
}

TEST_F(OwnCommands, AServerThatFallsSilentIsGivenUp) {
    webAddress = peerThatPlays("/silent,/stalled,/results");
    timeOut = std::chrono::milliseconds(2000);
    startControl(std::string(kPrices));
    const std::string told = "The server timed out due to either:{n}{n}"
                             "1. Server is busy on the supplier side, {n}   please try again in a few minutes.{n}{n}"
                             "2. Your proxy server timeout is to short,{n}   contact your administrator.{n}{n}"
                             "(The operation timed out.)";
    for (const char* const where : {"before its answer", "in the middle of it"}) {
        SCOPED_TRACE(where);
        logIn();
        play("wait frmMsgBox\nexpect-text lblMessage \"" + told + "\"\nexpect-hidden cmdButton2\nclick cmdButton1\n");
        expectIdle();
        play(R"(expect lvCommands "+prices|Prices|20200131|Error")");
    }
    logIn();
    expectIdle();
    EXPECT_EQ(heard(), "DownloadStart prices\r\nDownloadStart prices\r\n" + std::string(kCompleted));
}

} // namespace
} // namespace end_to_end
