#include "sendreceive/ucSendReceive.h"

#include "base/runtime_error.h"
#include "fakes/fake_host_document.h"
#include "sendreceive/control_fixture.h"

namespace sendreceive {
namespace {

using ucSendReceiveTest = ControlFixture;
using Rows = ControlFixture::Rows;

TEST_F(ucSendReceiveTest, ListsTheCommandsThatAreToBeShown) {
    load("<commands><command name='a' displaytext='First' required='yes' show='yes'/>"
         "<!-- no command --><command name='hidden' required='yes' checked='yes' show='no'/>"
         "<group><command name='b' displaytext='Second' checked='yes' show='yes'/></group>"
         "<command name='c' required='Yes' checked='no' show='yes'/><command name='d' show='YES'/></commands>");
    EXPECT_EQ(rows(), (Rows{"+a|First|| ", "+b|Second|| ", "-c||| "}));
    EXPECT_FALSE(control->cAlternate.visible());

    load("<commands/>");
    EXPECT_EQ(rows(), Rows{});
}

TEST_F(ucSendReceiveTest, LoadsUpToTheRowThatFails) {
    services.desktop.whenAsked("Error in LoadCommands:Key is not unique in collection");
    load("<commands><command name='a' show='yes'/><command name='a' show='yes'/><command name='b' "
         "show='yes'/></commands>");
    EXPECT_EQ(rows(), (Rows{"-a||| "}));

    std::string many = "<commands>";
    for (int i = 0; i < 40'000; ++i) {
        many += "<command name='c" + std::to_string(i) + "' show='yes'/>";
    }
    services.desktop.whenAsked("Error in LoadCommands:Overflow");
    load(many + "</commands>");
    EXPECT_EQ(control->lvCommands.rowCount(), 32'767U);

    services.desktop.whenAsked("Error in LoadCommands:Object variable or With block variable not set");
    control->setDomCommands(nullptr);
    control->LoadCommands();
    services.desktop.whenAsked("Error in LoadCommands:Object doesn't support this property or method");
    control->session.Globals = std::make_shared<fakes::FakeLateBound>();
    control->LoadCommands();
}

TEST_F(ucSendReceiveTest, OffersTheAlternateAddressOnlyWhereThereIsOne) {
    services.settings.set("Shop", "http://supplier/", "AltURL", "http://other/");
    load("<commands/>");
    EXPECT_TRUE(control->cAlternate.visible());
    host->addProperty("gWebService", "");
    load("<commands/>");
    EXPECT_FALSE(control->cAlternate.visible());
}

TEST_F(ucSendReceiveTest, ShowsWhenEachCommandWentThroughLast) {
    const auto settings = std::make_shared<fakes::FakeHostDocument>(
        services.files,
        "<quorvantis><accountdates a='20261101'><accountdate number='1001' b='20261102'/></accountdates>"
        "</quorvantis>");
    host->addProperty("gdomquorvantis", base::ObjectRef(settings));
    load("<commands><command name='a' show='yes'/><command name='b' show='yes' lastdateaccountspecific='yes'/>"
         "<command name='c' show='yes'/></commands>");
    EXPECT_EQ(rows(), (Rows{"-a||20261101| ", "-b||20261102| ", "-c|| | "}));
}

TEST_F(ucSendReceiveTest, TakesTheWayToTheServerFromTheSettings) {
    services.settings.set("Shop", "Dialup", "UseProxy", "1");
    services.settings.set("Shop", "Dialup", "FirewallType", "0");
    services.settings.set("Shop", "Dialup", "ProxyServer", "proxy.example");
    services.settings.set("Shop", "Dialup", "ProxyPort", "none");
    services.desktop.whenAsked("Error in SetHTTPSettings:Type mismatch");
    control->SetHTTPSettings();
    EXPECT_EQ(control->httpSettings().proxyServer, "proxy.example");

    services.settings.set("Shop", "http://supplier/", "AltURL", "http://other/");
    load("<commands/>");
    control->cAlternate.userClick();
    control->SetHTTPSettings();
    EXPECT_EQ(control->httpSettings().proxyServer, "") << "the alternate address is reached directly";
}

TEST_F(ucSendReceiveTest, ARequiredCommandStaysTicked) {
    load("<commands><command name='a' required='yes' show='yes'/><command name='b' checked='yes' show='yes'/>"
         "<command name=\"it's\" checked='yes' show='yes'/></commands>");
    services.desktop.whenAsked("This download is required, can not de-select...");
    control->lvCommands.userCheck(0, false);
    control->lvCommands.userCheck(1, false);
    EXPECT_EQ(rows(), (Rows{"+a||| ", "-b||| ", "+it's||| "}));

    services.desktop.whenAsked("Error in lvCommands_ItemCheck:Invalid expression: //command[@name='it's']");
    control->lvCommands.userCheck(2, false);
}

TEST_F(ucSendReceiveTest, TheBarFollowsTheAnnouncedLength) {
    services.desktop.whenAsked("Error in SetProgressBar:Division by zero");
    control->SetProgressBar(5);
    EXPECT_EQ(control->barProgress.barWidth(), 0);
    control->SetProgressBarMax();
    EXPECT_EQ(control->barProgress.barWidth(), ui::FramedBar::kFrameWidth - 30);
    control->SetProgressBarMinimum();
    EXPECT_EQ(control->barProgress.barWidth(), 0);
}

TEST_F(ucSendReceiveTest, TellsThatThePersonCancels) {
    control->cmdCancel.userClick();
    EXPECT_EQ(control->userKey(ui::key::kEscape), 0);
    EXPECT_EQ(control->userKey(u'x'), u'x');
    EXPECT_EQ(listener.heard, (Rows{"Cancelled", "Cancelled"}));

    services.desktop.whenAsked("Error in cmdCancel_Click:Overflow");
    listener.meanwhile = [] { throw base::RuntimeError(base::error::kOverflow); };
    control->cmdCancel.userClick();
}

// The login as the form has it; what becomes of it is the run's.
TEST_F(ucSendReceiveTest, OkAsksForThePassword) {
    load("<commands profile='1001'/>");
    services.desktop.whenShown("frmLogin", [&] {
        login::frmLogin& form = services.login;
        EXPECT_EQ(form.txtUserName.text(), "1001");
        EXPECT_FALSE(control->cmdOK.enabled());
        EXPECT_FALSE(control->lvCommands.enabled());
        form.txtPassword.userText("old");
        form.chChangePassword.userClick();
        form.tnewpassword.userText("new");
        form.tverifypassword.userText("new");
        form.cmdOK.userClick();
    });
    control->cmdOK.userClick();
    EXPECT_TRUE(control->cmdOK.enabled());
    EXPECT_TRUE(control->lvCommands.enabled());
    EXPECT_EQ(control->domCommands()->xml(), "<commands profile=\"1001\" password=\"OLD\" newpassword=\"NEW\"/>");
    EXPECT_EQ(host.use_count(), 2) << "the login form holds on to the host's object";

    host->addMethod("GetValue", [](const auto&) -> base::Variant { throw base::RuntimeError(base::error::kOverflow); });
    services.desktop.whenAsked("Error in cmdOK_Click:Overflow");
    control->cmdOK.userClick();
    EXPECT_FALSE(services.login.loaded());
    EXPECT_EQ(host.use_count(), 2) << "nor after a login that failed";
}

// Row, bar, status line and buttons follow the run; the listeners hear of it.
TEST_F(ucSendReceiveTest, ShowsHowARunGetsOn) {
    using Kind = ports::HttpOutcome::Kind;
    control->session.bLoginNotRequired = true;
    control->session.sWebAddress = "http://supplier/";
    load("<commands><command name='a' checked='yes' show='yes'/><command name='b' checked='yes' show='yes'/>"
         "<command name='c' required='yes'/></commands>");
    control->lvCommands.userCheck(1, false);
    listener.meanwhile = [&] {
        EXPECT_FALSE(control->cmdOK.enabled());
        EXPECT_FALSE(control->lvCommands.enabled());
        EXPECT_EQ(control->barProgress.barWidth(),
                  listener.heard.back().starts_with("DownloadStart") ? 0 : ui::FramedBar::kFrameWidth);
    };
    services.network.willAnswer("<results/>");
    services.network.willAnswer("<results/>");
    control->cmdOK.userClick();
    EXPECT_EQ(rows(), (Rows{"+a|||Done", "-b||| "}));
    EXPECT_EQ(listener.heard, (Rows{"DownloadStart a", "DownloadComplete a", "DownloadStart c", "DownloadComplete c",
                                    "SendReceiveCompleted"}));
    EXPECT_EQ(control->lProgress.text(), "Send/Receive completed...");
    EXPECT_TRUE(control->cmdOK.enabled());
    EXPECT_TRUE(control->lvCommands.enabled());

    listener.meanwhile = [] {};
    services.desktop.whenAsked("No");
    services.network.willAnswer("<results error='No'/>");
    control->cmdOK.userClick();
    EXPECT_EQ(rows(), (Rows{"+a|||Error", "-b||| "}));
    EXPECT_EQ(control->lProgress.text(), "Send/Receive failed...");
    EXPECT_EQ(control->barProgress.barWidth(), 0);
    EXPECT_TRUE(control->cmdOK.enabled());

    listener.heard.clear();
    services.network.willAnswer({{"<a/>"}, 200, "OK", {}, Kind::Answered, 0, "", [&] {
                                     EXPECT_EQ(rows(), (Rows{"+a|||Busy", "-b||| "}));
                                     control->cmdCancel.userClick();
                                 }});
    control->cmdOK.userClick();
    EXPECT_EQ(listener.heard, (Rows{"DownloadStart a", "Cancelled"}));
    EXPECT_EQ(control->lProgress.text(), "Send/Receive cancelled...");
    EXPECT_EQ(control->barProgress.barWidth(), 0);
    EXPECT_TRUE(control->cmdOK.enabled());
}

TEST_F(ucSendReceiveTest, TheBarFollowsTheBytes) {
    std::vector<std::int32_t> widths;
    for (int n = 1; n <= 4; ++n) {
        services.desktop.atDoEvents(n, [&] { widths.push_back(control->barProgress.barWidth()); });
    }
    services.network.willAnswer({{"<a>x", "</a>"}, 200, "OK", {{"Content-Length", "8"}}});
    std::string url = "http://supplier/";
    EXPECT_TRUE(control->SendReceive(url, "POST", std::make_shared<xml::XmlDocument>(), nullptr, "", false, false));
    EXPECT_EQ(widths, (std::vector<std::int32_t>{0, 3000, 3000, ui::FramedBar::kFrameWidth - 30}));
    EXPECT_EQ(control->barProgress.barWidth(), ui::FramedBar::kFrameWidth);
    control->SetProgressBar(2);
    EXPECT_EQ(control->barProgress.barWidth(), ui::FramedBar::kFrameWidth / 4);
}

TEST_F(ucSendReceiveTest, KeepsItsListDuringARun) {
    load("<commands><command name='a' show='yes'/></commands>");
    services.desktop.whenShown("frmLogin", [&] {
        control->lvCommands.clear();
        control->LoadCommands();
        EXPECT_EQ(control->lvCommands.rowCount(), 0U);
        services.login.cmdCancel.userClick();
    });
    control->cmdOK.userClick();
    control->LoadCommands();
    EXPECT_EQ(control->lvCommands.rowCount(), 1U);
}

TEST_F(ucSendReceiveTest, TracesWhereTheHostHasADataFolder) {
    const std::string trace = "C:\\QV\\quorvantis_sendreceive.txt";
    control->SetMessage("first");
    EXPECT_EQ(control->lProgress.text(), "first");
    services.files.addFolder("C:\\QV");
    control->SetMessage("second");
    EXPECT_EQ(services.files.contents(trace), "11/15/2026 7:08:12 PM,Sub SetMessage --> second\r\n");
    services.desktop.whenAsked("Error in WriteSingleLog:Permission denied");
    services.files.lock(trace);
    control->WriteSingleLog("lost", false);
    control->session.Globals = nullptr;
    control->SetMessage("without a host");
}

TEST_F(ucSendReceiveTest, TakesItsColoursFromTheHost) {
    std::string answer = "lightgreen";
    base::Variant buttons = "NOT_FOUND";
    host->addMethod("GetValue", [&](const auto& arguments) {
        return base::toText(arguments.front()) == "FrameColor" ? base::Variant(answer) : buttons;
    });
    control->Setcolors();
    EXPECT_EQ(control->barProgress.backColor(), 0xC0FFC0U);
    EXPECT_EQ(control->cmdOK.backColor(), std::nullopt);
    buttons = "LightGrey"; // the frame's colour, but not the buttons'
    control->Setcolors();
    EXPECT_EQ(control->cmdOK.backColor(), ui::color::kLight3d);
    answer = "Orange"; // not one that we know
    control->Setcolors();
    EXPECT_EQ(control->barProgress.backColor(), 0xC0FFC0U);
    services.desktop.whenAsked("Error in Setcolors:Overflow");
    host->failOn("GetValue", base::error::kOverflow);
    control->Setcolors();
}

TEST_F(ucSendReceiveTest, AListenerMayLeaveAndLetGoOfTheControl) {
    Listener second;
    control->advise(second);
    listener.meanwhile = [&] {
        control->unadvise(second);
        control->unadvise(listener);
        control.reset();
    };
    control->cmdCancel.userClick();
    EXPECT_EQ(listener.heard, Rows{"Cancelled"});
    EXPECT_EQ(second.heard, Rows{});
}

} // namespace
} // namespace sendreceive
