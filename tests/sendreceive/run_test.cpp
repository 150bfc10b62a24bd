// A whole run: from the press of OK, through the commands, to its end.
#include "base/runtime_error.h"
#include "fakes/fake_host_document.h"
#include "sendreceive/control_fixture.h"

namespace sendreceive {
namespace {

using Kind = ports::HttpOutcome::Kind;

class RunTest : public ControlFixture {
protected:
    RunTest() {
        services.files.addFolder("C:\\QV");
        services.settings.set("Shop", "Dialup", "DialType", "Manual");
        control->bLoginNotRequired = true;
        control->sWebAddress = "http://supplier/";
    }
    // What was posted, by the commands' names.
    [[nodiscard]] Rows posted() const {
        Rows names;
        for (const ports::HttpRequest& request : services.network.requests) {
            xml::XmlDocument document;
            EXPECT_TRUE(document.load(request.body)) << request.body;
            EXPECT_EQ(document.selectNodes("//command").size(), 1U) << request.body;
            names.push_back(document.selectSingleNode("//command").getAttribute("name"));
        }
        return names;
    }
    void answer(int times, const std::string& body = "<results/>") {
        for (int n = 0; n < times; ++n) {
            services.network.willAnswer(body);
        }
    }
};

TEST_F(RunTest, TickedAndRequiredCommandsGoOutOneByOne) {
    load("<commands profile='1001'><command name='a' checked='yes' show='yes'/><command name='b' show='yes'/>"
         "<group><command name='c' required='yes' show='no'/></group></commands>");
    control->domCommands()->documentElement().setAttribute("password", "P");
    answer(2);
    control->cmdOK.userClick();
    EXPECT_EQ(posted(), (Rows{"a", "c"}));
    EXPECT_EQ(services.network.requests.at(1).body,
              "<commands profile=\"1001\" password=\"P\"><command name=\"c\" required=\"yes\" show=\"no\" "
              "lastdate=\"\"/></commands>");
    EXPECT_EQ(control->lvCommands.cell(0, 3), "Done");
    EXPECT_EQ(control->lvCommands.cell(1, 3), " ");
    EXPECT_EQ(listener.heard, (Rows{"DownloadStart a", "DownloadComplete a", "DownloadStart c", "DownloadComplete c",
                                    "SendReceiveCompleted"}));
    EXPECT_EQ(control->lProgress.text(), "Send/Receive completed...");
    EXPECT_TRUE(control->cmdOK.enabled());
    EXPECT_EQ(control->domCommands()->selectNodes("//command").size(), 3U) << "the command document stays whole";
}

TEST_F(RunTest, AFailureEndsTheRunAndShowsExceptForAccounts) {
    load("<commands><command name='getaccount130' checked='yes' show='yes'/>"
         "<command name='b' checked='yes' show='yes'/></commands>");
    answer(1, "<results error='No'/>");
    services.desktop.whenAsked("No");
    control->cmdOK.userClick();
    EXPECT_EQ(control->lvCommands.cell(0, 3), "Busy");

    answer(1);
    answer(1, "<results error='No'/>");
    services.desktop.whenAsked("No");
    control->cmdOK.userClick();
    EXPECT_EQ(control->lvCommands.cell(0, 3), "Done");
    EXPECT_EQ(control->lvCommands.cell(1, 3), "Error");
    EXPECT_EQ(listener.heard.back(), "DownloadStart b");
    EXPECT_TRUE(control->cmdOK.enabled());
}

TEST_F(RunTest, AnUploadClosesTheRunAfterItIsDone) {
    load("<commands><command name='sendimagelinks210' checked='yes' show='yes'/>"
         "<command name='b' checked='yes' show='yes'/></commands>");
    answer(1);
    control->cmdOK.userClick();
    EXPECT_EQ(listener.heard,
              (Rows{"DownloadStart sendimagelinks210", "DownloadComplete sendimagelinks210", "SendReceiveCompleted"}));
    EXPECT_EQ(control->lvCommands.cell(0, 3), "Done");
    EXPECT_EQ(control->lvCommands.cell(1, 3), " ");
}

TEST_F(RunTest, WhateverMentionsAnUploadClosesTheRun) {
    const auto eventsOf = [this](const std::string& payload, const std::string& results) {
        listener.heard.clear();
        listener.meanwhile = [this, payload] {
            if (listener.heard.back() == "DownloadStart a") {
                listener.request->documentElement().setAttribute("payload", payload);
            }
        };
        load("<commands><command name='a' checked='yes' show='yes'/>"
             "<command name='b' checked='yes' show='yes'/></commands>");
        answer(1, results);
        control->cmdOK.userClick();
        return listener.heard.size();
    };
    EXPECT_EQ(eventsOf("x SENDProductGroups210 x", "<results/>"), 3U);
    EXPECT_EQ(eventsOf("", "<results><!--sendimagelinksall210--></results>"), 3U);
    answer(1);
    EXPECT_EQ(eventsOf("sendproductgroups21", "<results/>"), 5U);
}

TEST_F(RunTest, TheServerMayAskForACommandAgain) {
    const auto settings = std::make_shared<fakes::FakeHostDocument>(services.files, "<quorvantis/>");
    host->addProperty("gdomquorvantis", base::ObjectRef(settings));
    host->addProperty("gQuorXMLpath", "C:\\QV\\");
    load("<commands><command name='a' checked='yes' show='yes'/></commands>");
    answer(1, "<results><command name='b' redo='true'/><command name='a' redo='true'/></results>");
    answer(1, "<results redo='true'/>");
    answer(1, "<results><command name='a' redo='false'/></results>");
    control->cmdOK.userClick();
    EXPECT_EQ(posted(), (Rows{"a", "a", "a"}));
    EXPECT_EQ(listener.heard.size(), 5U) << "one DownloadStart, three DownloadComplete, the end";
    EXPECT_EQ(control->domCommands()->selectSingleNode("//command").getAttribute("redo"), "false");
    EXPECT_TRUE(services.files.contents("C:\\QV\\quorvantis.xml").find("a=\"20261115\"") != std::string::npos);
}

TEST_F(RunTest, CancelStopsBeforeTheServersWordCounts) {
    load("<commands><command name='sendimagelinks210' checked='yes' show='yes'/>"
         "<command name='b' checked='yes' show='yes'/></commands>");
    listener.meanwhile = [this] {
        if (listener.heard.back() == "DownloadStart sendimagelinks210") {
            control->cmdCancel.userClick();
        }
    };
    control->cmdOK.userClick();
    EXPECT_TRUE(services.network.requests.empty()) << "cancelled before the first byte";
    EXPECT_EQ(listener.heard, (Rows{"DownloadStart sendimagelinks210", "Cancelled"}));
    EXPECT_TRUE(control->cmdOK.enabled());

    // Pressed when the whole answer was there: it may have been taken, but the marks stay.
    listener.meanwhile = [] {};
    listener.heard.clear();
    fakes::Answer late{{"<results/>"}};
    services.network.willAnswer(late);
    services.desktop.atDoEvents(3, [this] { control->gCancelled = true; });
    control->cmdOK.userClick();
    EXPECT_EQ(listener.heard, (Rows{"DownloadStart sendimagelinks210"}));
}

TEST_F(RunTest, AHandlersErrorEndsTheRun) {
    load("<commands><command name='a' checked='yes' show='yes'/></commands>");
    listener.meanwhile = [this] {
        if (listener.heard.back().starts_with("DownloadComplete")) {
            throw base::RuntimeError(base::error::kInvalidProcedureCall);
        }
    };
    answer(1);
    services.desktop.whenAsked("Error in cmdOK_Click:Invalid procedure call or argument");
    control->cmdOK.userClick();
    EXPECT_EQ(control->lvCommands.cell(0, 3), "Busy");
    EXPECT_EQ(listener.heard.back(), "DownloadComplete a");
    EXPECT_TRUE(control->cmdOK.enabled());
    EXPECT_NE(services.files.contents("C:\\QV\\quorvantis_sendreceive.txt")
                  .find("Sub cmdOK_Click --> Error=Invalid procedure call or argument"),
              std::string::npos);
}

TEST_F(RunTest, ALineThatWasDialledHereIsOfferedToBeHungUp) {
    load("<commands><command name='a' checked='yes' show='yes'/></commands>");
    services.settings.set("Shop", "Dialup", "DialType", "DialUp");
    services.network.phoneBook = {"Work"};
    services.network.willAnswer({{}, 0, "", {}, Kind::Failed, 6, "Could not resolve host"});
    services.desktop.whenShown("frmDial", [this] {
        auto& form = dynamic_cast<connection::frmDial&>(*services.desktop.shownForm());
        form.lPhonebook.userSelect(0);
        form.bPhoneBookConnect.userClick();
        services.network.connect();
    });
    answer(1);
    services.desktop.whenAsked("Do you want to disconect from the internet?", ui::Answer::Yes);
    control->cmdOK.userClick();
    EXPECT_FALSE(services.network.connected);
    EXPECT_EQ(listener.heard.back(), "SendReceiveCompleted");
}

} // namespace
} // namespace sendreceive
