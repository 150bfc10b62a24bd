// A whole run: from the login, through the commands, to its end.
#include "base/runtime_error.h"
#include "exchange/engine_fixture.h"
#include "fakes/fake_host_document.h"

#include <set>

namespace exchange {
namespace {

class RunTest : public EngineFixture {
protected:
    RunTest() {
        session.bLoginNotRequired = true;
        session.sWebAddress = "http://supplier/";
    }
    // Runs the commands of this document, of which these are ticked.
    void run(const std::string& document, std::set<std::string> ticked = {}) {
        auto loaded = std::make_shared<xml::XmlDocument>();
        ASSERT_TRUE(loaded->loadXml(document));
        commands = std::make_shared<Commands>(loaded);
        again(std::move(ticked));
    }
    void again(std::set<std::string> ticked = {}) {
        watcher.heard.clear();
        services.network.requests.clear();
        engine.run(commands, [&](const std::string& name) { return ticked.contains(name); });
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
    // Acts once, when this is heard.
    void when(const std::string& event, std::function<void()> action) {
        watcher.meanwhile = [this, event, action = std::move(action)] {
            if (watcher.heard.back() == event) {
                action();
            }
        };
    }

    std::shared_ptr<Commands> commands;
};

TEST_F(RunTest, TickedAndRequiredCommandsGoOutOneByOne) {
    answer(2);
    run("<commands profile='1001' password='P'><command name='a'/><command name='b'/>"
        "<group><command name='c' required='yes'/></group></commands>",
        {"a"});
    EXPECT_EQ(posted(), (Rows{"a", "c"}));
    EXPECT_EQ(services.network.requests.at(1).body,
              "<commands profile=\"1001\" password=\"P\"><command name=\"c\" required=\"yes\" "
              "lastdate=\"\"/></commands>");
    EXPECT_EQ(watcher.heard,
              (Rows{"starts a", "busy a", "answered a", "done a", "starts c", "busy c", "answered c", "done c",
                    "status Send/Receive completed...", "completed", "run completed", "offer to disconnect"}));
    EXPECT_EQ(commands->document()->selectNodes("//command").size(), 3U) << "the command document stays whole";
    EXPECT_EQ(engine.state().phase, RunState::Phase::Completed);
}

TEST_F(RunTest, AFailureEndsTheRunAndShowsExceptForAccounts) {
    const std::string two = "<commands><command name='getaccount130'/><command name='b'/></commands>";
    answer(1, "<results error='No'/>");
    watcher.whenTold("No");
    run(two, {"getaccount130", "b"});
    EXPECT_EQ(watcher.heard,
              (Rows{"starts getaccount130", "busy getaccount130", "run failed getaccount130", "offer to disconnect"}));
    answer(1);
    answer(1, "<results error='No'/>");
    watcher.whenTold("No");
    run(two, {"getaccount130", "b"});
    EXPECT_EQ(Rows(watcher.heard.begin() + 4, watcher.heard.end()),
              (Rows{"starts b", "busy b", "error b", "run failed, error b", "offer to disconnect"}));
}

TEST_F(RunTest, WhateverMentionsAnUploadClosesTheRunAfterItIsDone) {
    const auto sent = [this](const std::string& first, const std::string& payload, const std::string& answered) {
        when("starts " + first, [this, payload] { watcher.request->documentElement().setAttribute("x", payload); });
        answer(1, answered);
        run("<commands><command name='" + first + "'/><command name='b'/></commands>", {first, "b"});
        EXPECT_EQ(watcher.heard.at(3), "done " + first);
        return posted().size();
    };
    EXPECT_EQ(sent("sendimagelinks210", "", "<results/>"), 1U);
    EXPECT_EQ(sent("a", "x SENDProductGroups210 x", "<results/>"), 1U);
    EXPECT_EQ(sent("a", "", "<results><!--sendimagelinksall210--></results>"), 1U);
    answer(1);
    EXPECT_EQ(sent("a", "sendproductgroups21", "<results/>"), 2U);
}

TEST_F(RunTest, TheServerMayAskForACommandAgain) {
    const auto settings = std::make_shared<fakes::FakeHostDocument>(services.files, "<quorvantis/>");
    host->addProperty("gdomquorvantis", base::ObjectRef(settings));
    host->addProperty("gQuorXMLpath", "C:\\QV\\");
    answer(1, "<results><command name='b' redo='true'/><command name='a' redo='true'/></results>");
    answer(1, "<results redo='true'/>");
    answer(1, "<results><command name='a' redo='false'/></results>");
    run("<commands><command name='a'/></commands>", {"a"});
    EXPECT_EQ(posted(), (Rows{"a", "a", "a"}));
    EXPECT_EQ(Rows(watcher.heard.begin(), watcher.heard.begin() + 6),
              (Rows{"starts a", "busy a", "answered a", "answered a", "answered a", "done a"}));
    EXPECT_EQ(commands->document()->selectSingleNode("//command").getAttribute("redo"), "false");
    EXPECT_TRUE(services.files.contents("C:\\QV\\quorvantis.xml").find("a=\"20261115\"") != std::string::npos);
}

// Where a Cancel comes decides what is sent, and what the supplier's word is worth.
TEST_F(RunTest, ACancelEndsTheRunAtItsNextStep) {
    const std::string two = "<commands><command name='a'/><command name='b'/></commands>";
    when("starts a", [this] { engine.cancel(); });
    run(two, {"a", "b"});
    EXPECT_TRUE(services.network.requests.empty()) << "cancelled before the first byte";
    EXPECT_EQ(watcher.heard, (Rows{"starts a", "busy a", "disconnect", "error a", "run cancelled: a"}));

    // When the whole answer was there: it may have been taken, but the marks stay.
    services.network.willAnswer("<results/>");
    when("busy a", [this] { watcher.atIdle(1, [this] { session.gCancelled = true; }); });
    run(two, {"a", "b"});
    EXPECT_EQ(watcher.heard, (Rows{"starts a", "busy a", "run cancelled: a"}));

    // Once it was taken: the command is done, and nothing of the next one happens.
    answer(1);
    when("answered a", [this] { engine.cancel(); });
    run(two, {"a", "b"});
    EXPECT_EQ(watcher.heard, (Rows{"starts a", "busy a", "answered a", "done a", "run cancelled: a"}));

    // After the last one there is nothing to be cancelled.
    answer(1);
    run(two, {"a"});
    EXPECT_EQ(watcher.heard.back(), "offer to disconnect");
    EXPECT_EQ(watcher.heard.at(5), "completed");
}

TEST_F(RunTest, AHandlersErrorEndsTheRun) {
    when("answered a", [] { throw base::RuntimeError(base::error::kInvalidProcedureCall); });
    answer(1);
    watcher.whenReported("Error in cmdOK_Click:Invalid procedure call or argument");
    run("<commands><command name='a'/></commands>", {"a"});
    EXPECT_EQ(watcher.heard, (Rows{"starts a", "busy a", "answered a", "run failed, error a"}));
    EXPECT_NE(watcher.traced.find("Sub cmdOK_Click --> Error=Invalid procedure call or argument"), std::string::npos);

    when("starts a", [] { throw base::RuntimeError(base::error::kOutOfMemory); });
    EXPECT_THROW(again({"a"}), base::RuntimeError);
    EXPECT_FALSE(engine.state().running());
    watcher.meanwhile = nullptr;
    answer(1);
    again({"a"});
    EXPECT_EQ(engine.state().phase, RunState::Phase::Completed);
}

TEST_F(RunTest, ThePasswordGoesIntoTheDocument) {
    session.bLoginNotRequired = false;
    const auto after = [this](const Login& login) {
        watcher.whenLogin(login);
        again();
        return commands->document()->xml();
    };
    watcher.whenLoginCancelled();
    run("<commands profile='1001'/>");
    EXPECT_EQ(watcher.heard, Rows{"run ended"});
    EXPECT_EQ(commands->document()->xml(), "<commands profile=\"1001\"/>");
    EXPECT_EQ(after({"A/>\"B", "NEW"}), "<commands profile=\"1001\" password=\"A/&gt;&quot;B\" newpassword=\"NEW\"/>");
    EXPECT_EQ(after({"C", ""}), "<commands profile=\"1001\" password=\"C\"/>");

    commands = nullptr;
    watcher.whenLogin({"C", ""});
    watcher.whenReported("Error in cmdOK_Click:Object variable or With block variable not set");
    again();
}

TEST_F(RunTest, FilesAreFetchedOnTheWayAndASetUpProgramIsStartedAtTheEnd) {
    host->addProperty("gBusyWithUpgrade", false);
    services.files.addFile("C:\\QV\\files\\QuorVantisSetup.exe", "old");
    services.programs.add("C:\\QV\\files\\QuorVantisSetup.exe", {base::toFileVersion("7")});
    services.network.willAnswer("<results><file filename='QuorVantisSetup.exe' version=''/></results>");
    services.network.willAnswer(file("MZ"));
    watcher.whenSetUpIsDue();
    run("<commands><command name='getnews' forcedownload='true'/></commands>", {"getnews"});
    EXPECT_EQ(services.programs.started, (Rows{"C:\\QV\\files\\QuorVantisSetup.exe"}));
    EXPECT_EQ(watcher.heard.back(), "set-up starts");
    EXPECT_FALSE(session.bMustRunSetup);
}

} // namespace
} // namespace exchange
