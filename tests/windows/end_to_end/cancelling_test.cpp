// Cancel, whatever a run is waiting for: the window closes at once, the links stay marked, and the next run works.
#include "peers/internet_options.h"
#include "windows/end_to_end/upload.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <vector>

namespace end_to_end {
namespace {

class Cancelling : public Upload {
protected:
    Cancelling() { peers::forgetProxyVariables(); }

    // From the image manager. A run that `reaches` the peer is cancelled when its request is there.
    void sendAndCancel(const std::string& how, bool reaches) {
        const std::size_t before = requests();
        send();
        if (reaches) {
            waitUntil("the request to reach the peer", [&] { return requests() > before; });
        }
        play(R"(
            wait frmQVI_sendreceive
            expect-text lProgress "Sending image links, please wait"
            expect-disabled cmdOK
        )" + how +
             R"(
            wait-closed frmQVI_sendreceive 3
        )");
        // The window is gone before the run is at its end.
        waitUntil("the run to be cancelled",
                  [&] { return read("quorvantis_sendreceive.txt").find(",Cancelled\r\n") != std::string::npos; });
        expectStillToBeSent();
    }

private:
    static std::size_t requests() { return std::ranges::count(contentsOf(peer("LOG")), '\n'); }
};

TEST_F(Cancelling, EndsARunAtOnceWhateverItWaitsFor) {
    struct Stage {
        const char* name;
        std::function<void()> prepare;
        bool reachesPeer;
        const char* cancel;
    };
    const auto server = [] { setConnection("UseProxy", "0"); };
    const auto by = [](const char* type, const char* proxy) { return [=] { goThrough(type, peer(proxy)); }; };
    const std::vector<Stage> stages{
        {"a connection", by("0", "FULL"), false, "key Escape"},
        {"the word of a SOCKS server", by("2", "MUTE"), false, "click cmdCancel"},
        {"a tunnel", by("4", "MUTE"), false, "close frmQVI_sendreceive"},
        {"an answer", server, true, "key Alt+F4"},
        {"the rest of the answer's head", server, true, "key Escape"},
        {"the rest of the answer", server, true, "click cmdCancel"},
    };
    webAddress = peerThatPlays("/silent,/half-head,/endless,/silent,/half-head,/endless,/results");
    startHost({"GEAR"});
    link("a.jpg");
    for (const char* const winInet : {"0", "1"}) {
        setConnection("UseWinInet", winInet);
        for (const Stage& stage : stages) {
            SCOPED_TRACE(stage.name + std::string(", WinInet: ") + winInet);
            stage.prepare();
            sendAndCancel(stage.cancel, stage.reachesPeer);
        }
    }
    send();
    expectCompleted();
    leave();
    EXPECT_EQ(modified(), "");
}

TEST_F(Cancelling, EndsAnUploadThatNobodyReads) {
    // More than the system takes in before the peer has read.
    const std::string note(1'000'000, 'x');
    std::string links;
    for (int i = 0; i < 8; ++i) {
        links += R"(<p f1="B" f2="b.jpg" f3="created" f4=")" + note + "\"/>";
    }
    write("images.xml", "<images>" + links + "</images>");
    webAddress = peerThatPlays("/unread,/results");
    startHost({"GEAR"});
    link("a.jpg");
    sendAndCancel("key Escape", true);
    send();
    expectCompleted();
    leave();
    EXPECT_EQ(modified(), "");
}

TEST_F(Cancelling, ADialogueOfAFailureLeavesTheWindowUsable) {
    webAddress = peerThatPlays("/empty,/empty,/404,/404,/results");
    setConnection("DialType", "Proxy");
    upload();
    play("wait frmDial\nclose frmDial");
    expectFailureShown();

    setConnection("DialType", "Manual");
    sendAgain();
    play("wait frmMsgBox\nkey Escape");
    expectFailureShown();
    expectStillToBeSent();

    // The settings are no way out of the run: it goes on when they are closed, cancelled or not.
    sendAgain();
    play("wait frmMsgBox\nexpect-text lblMessage \"Error while connecting to [" + webAddress +
         "]. Please contact your supplier.{n}{n}(HTTP protocol error. 404 Not Here)\"");
    play(R"(
        click cmdButton2
        wait frmDial
        close frmDial
        wait-closed frmDial
        wait frmMsgBox
        click cmdButton3
        wait frmDial
        click cmdOK
    )");
    expectCompleted();
    leave();
    EXPECT_EQ(modified(), "");
}

} // namespace
} // namespace end_to_end
