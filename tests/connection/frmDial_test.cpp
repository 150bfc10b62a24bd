// The connection settings as their user and the store see them: what is stored when, dialling, the connection test.
#include "connection/frmDial.h"

#include "base/runtime_error.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_network.h"
#include "fakes/fake_settings.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace connection {
namespace {

using Lines = std::vector<std::string>;
using Kind = ports::HttpOutcome::Kind;

constexpr std::string_view kNoPhoneBook =
    "QuorVantis will not be able to connect to the internet for you as \r\nyou do not have any standard windows dial "
    "up connections.";

enum Tab : std::size_t { kDialTab, kProxyTab, kTestTab };

class frmDialTest : public testing::Test {
protected:
    frmDialTest() { store("DialType", "Proxy"); }

    void store(std::string_view key, std::string_view value) { settings.set("Shop", "Dialup", key, value); }
    std::string stored(std::string_view key) { return settings.get("Shop", "Dialup", key); }
    void show(frmDial& shown, const std::function<void()>& user) {
        desktop.whenShown("frmDial", [&] {
            user();
            if (shown.shown()) {
                shown.bCancel2.userClick();
            }
        });
        shown.showModal();
    }
    void show(const std::function<void()>& user) { show(form, user); }
    void showTestPage(const std::function<void()>& user) {
        show([&] {
            form.tabPages.userSelect(kTestTab);
            user();
        });
    }

    fakes::FakeDesktop desktop;
    fakes::FakeFileSystem files;
    fakes::FakeSettings settings;
    fakes::FakeNetwork network;
    std::unique_ptr<ports::Dialer> dialer = network.createDialer();
    Lines log;
    DialServices services{desktop, files,   settings,
                          network, *dialer, [this](std::string_view line) { log.emplace_back(line); }};
    DialHost host{"Shop", "Supplier", "http://supplier/test", "C:\\Windows\\QuorVantis"};
    frmDial form{services, host};
};

TEST_F(frmDialTest, TheFirstUseStoresTheFirstFirewallAndTellsOfAnEmptyPhoneBookOnce) {
    store("DialType", "");
    desktop.whenAsked(kNoPhoneBook, ui::Answer::Ok, ui::Icon::Critical);
    show([&] {
        EXPECT_TRUE(form.Option1[1].chosen());
        EXPECT_EQ(form.comType.items(),
                  (Lines{"Proxy", "SOCKS Version 4", "SOCKS Version 5", "Basic Authentication", "Tunnel Proxy"}));
        EXPECT_EQ(form.comType.selectedText(), "Proxy");
        EXPECT_EQ(form.txtPort.text(), "") << "loading is no choice of a type";
    });
    EXPECT_EQ(settings.all(), (Lines{"Shop|Dialup|DialType=Manual", "Shop|Dialup|FirewallType=0"}));
    show([] {}); // not again
}

TEST_F(frmDialTest, EachDialTypeIsShownAndOnlyAUsersChoiceStoresIt) {
    network.phoneBook = {"Home", "Office"};
    const struct {
        const char* stored;
        std::size_t option;
    } kRows[] = {{"DialUp", 0}, {"Manual", 1}, {"Proxy", 2}, {"", 2}, {"manual", 2}};
    for (const auto& row : kRows) {
        store("DialType", row.stored);
        show([&] {
            form.tabPages.userSelect(kDialTab);
            for (std::size_t option = 0; option < 3; ++option) {
                EXPECT_EQ(form.Option1[option].chosen(), option == row.option) << row.stored;
            }
        });
        EXPECT_EQ(stored("DialType"), row.stored);
    }
    show([&] {
        form.tabPages.userSelect(kDialTab);
        const char* const kTypes[] = {"DialUp", "Manual", "Proxy"};
        for (const std::size_t option : {1U, 0U, 2U}) {
            form.Option1[option].userClick();
            EXPECT_EQ(stored("DialType"), kTypes[option]);
            EXPECT_EQ(form.lPhonebook.items(), network.phoneBook) << "and not twice";
        }
    });
}

TEST_F(frmDialTest, SettingsAreLoadedAndStoredAsTheyStand) {
    store("ProxyPort", "80x");
    store("ProxyPassword", " s:e\"cret ");
    store("UseProxy", "1");
    store("UseWinInet", "1");
    store("FirewallType", "2");
    show([&] {
        EXPECT_EQ(form.txtPort.text(), "80x");
        EXPECT_TRUE(form.chkProxy.checked());
        form.txtServer.userText("proxy.example");
        form.txtUserID.userText("me");
        EXPECT_EQ(stored("ProxyServer"), "");
        form.chkUseWinInet.userClick(); // at once
        EXPECT_EQ(stored("UseWinInet"), "0");
        form.cmdOK.userClick();
    });
    EXPECT_FALSE(form.Cancelled);
    EXPECT_EQ(settings.all(), (Lines{"Shop|Dialup|DialType=Proxy", "Shop|Dialup|FirewallType=2",
                                     "Shop|Dialup|ProxyPassword= s:e\"cret ", "Shop|Dialup|ProxyPort=80x",
                                     "Shop|Dialup|ProxyServer=proxy.example", "Shop|Dialup|ProxyUser=me",
                                     "Shop|Dialup|UseProxy=1", "Shop|Dialup|UseWinInet=0"}));
}

TEST_F(frmDialTest, EachFirewallHasItsUsualPortAndItsFields) {
    store("ProxyPort", "3128");
    show([&] {
        const auto expectFields = [&](bool login, bool address, const std::string& hint, const char* when) {
            EXPECT_EQ(form.txtUserID.enabled() && form.txtPassword.enabled() && form.lblUserID.enabled(), login)
                << when;
            EXPECT_EQ(form.txtServer.enabled() && form.txtPort.enabled() && form.lblServer.enabled(), address) << when;
            EXPECT_EQ(form.lblUser.text() + form.lblPassword.text(), hint + hint) << when;
        };
        expectFields(false, false, "", "no proxy");
        EXPECT_FALSE(form.comType.enabled());
        form.chkProxy.userClick();
        expectFields(true, true, "(optional)", "ticked");
        EXPECT_EQ(form.txtPort.text(), "3128");
        const struct {
            std::size_t type;
            const char* port;
            bool login, address;
        } kRows[] = {{1, "1080", false, true},
                     {3, "1080", true, false},
                     {4, "80", true, true},
                     {2, "1080", true, true},
                     {0, "8080", true, true}};
        for (const auto& row : kRows) {
            form.comType.userSelect(row.type);
            EXPECT_EQ(form.txtPort.text(), row.port);
            expectFields(row.login, row.address, row.type == 0 ? "(optional)" : "", row.port);
        }
        form.chkProxy.userClick();
        expectFields(false, false, "", "unticked");
    });
}

TEST_F(frmDialTest, AFirewallThatIsNoneSelectsNothingUntilAProxyIsWanted) {
    for (const char* const type : {"5", "-1", "x", "1x", "99999999999999999999"}) {
        store("FirewallType", type);
        store("ProxyPort", "3128");
        store("UseProxy", "0");
        show([&] {
            EXPECT_FALSE(form.comType.selected()) << type;
            form.UseSave();
            EXPECT_EQ(stored("FirewallType"), "-1");
            form.chkProxy.userClick();
            EXPECT_EQ(form.comType.selected(), 0U);
            EXPECT_EQ(form.txtPort.text(), "3128");
        });
    }
}

TEST_F(frmDialTest, WithoutANameNothingIsStoredAndWhatWasTypedStands) {
    const Lines before = settings.all();
    host.gSettingString = "";
    network.phoneBook = {"Home"};
    frmDial nameless(services, host);
    network.willAnswer("page");
    show(nameless, [&] {
        EXPECT_TRUE(nameless.lblNotStored.visible());
        nameless.txtServer.setText("proxy");
        nameless.chkProxy.userClick();
        nameless.chkUseWinInet.userClick();
        nameless.tabPages.userSelect(kDialTab);
        nameless.Option1[0].userClick();
        nameless.lPhonebook.userSelect(0);
        nameless.bPhoneBookConnect.userClick();
        nameless.tabPages.userSelect(kTestTab);
        nameless.cmdGet.userClick();
        EXPECT_EQ(nameless.txtServer.text(), "proxy");
        nameless.cmdOK.userClick();
    });
    EXPECT_FALSE(nameless.Cancelled);
    EXPECT_EQ(settings.all(), before);
}

TEST_F(frmDialTest, AStoreThatCannotBeWrittenIsReportedAndKeepsTheFormOpen) {
    settings.failWrites(base::error::kPathFileAccess);
    show([&] {
        EXPECT_FALSE(form.lblNotStored.visible());
        desktop.whenAsked("Error in UseSave:Path/File access error");
        form.cmdOK.userClick();
        EXPECT_TRUE(form.shown());
        desktop.whenAsked("Error in chkUseWinInet_Click:Path/File access error");
        form.chkUseWinInet.userClick();
        form.tabPages.userSelect(kTestTab);
        desktop.whenAsked("Error in TestUrl:Path/File access error");
        form.cmdGet.userClick();
        EXPECT_TRUE(form.cmdGet.enabled());
    });
}

TEST_F(frmDialTest, TheModeSaysWhatIsInFrontAndTheIconComesFromTheComponentsFolder) {
    show([&] {
        EXPECT_EQ(form.tabPages.selected(), kProxyTab);
        EXPECT_EQ(form.iconFile(), "");
    });
    EXPECT_TRUE(form.Cancelled);
    files.addFile("C:\\Windows\\QuorVantis\\QuorVantis.ico", "icon");
    form.DialMode = true;
    show([&] {
        EXPECT_EQ(form.tabPages.selected(), kDialTab);
        EXPECT_EQ(form.focused(), &form.bPhoneBookConnect);
        EXPECT_EQ(form.iconFile(), "C:\\Windows\\QuorVantis\\QuorVantis.ico");
    });
}

class DiallingTest : public frmDialTest {
protected:
    DiallingTest() {
        network.phoneBook = {"Home", "Office", "home"};
        store("DialType", "DialUp");
        form.DialMode = true;
    }
    void connect() {
        form.lPhonebook.userSelect(1);
        form.bPhoneBookConnect.userClick();
    }
};

TEST_F(DiallingTest, TheRememberedEntryIsSelectedExactlyAndTheNextOneRemembered) {
    const struct {
        const char* stored;
        std::string selected;
    } kRows[] = {{"home", "home"}, {"Office", "Office"}, {"OFFICE", ""}, {"gone", ""}, {"", ""}};
    for (const auto& row : kRows) {
        store("PhoneBook", row.stored);
        show([&] { EXPECT_EQ(form.lPhonebook.selectedText(), row.selected); });
    }
    show([&] {
        desktop.whenAsked("Please choose a dial in connection");
        form.bPhoneBookConnect.userClick();
        form.Option1[1].userClick();
        form.lPhonebook.userSelect(1);
        desktop.whenAsked("Please choose a dial in connection");
        form.bPhoneBookConnect.userClick();
        EXPECT_TRUE(network.dialled.empty());
        form.Option1[0].userClick();
        EXPECT_FALSE(form.bCancel1.enabled());
        connect();
        EXPECT_FALSE(form.bPhoneBookConnect.enabled());
        EXPECT_TRUE(form.bCancel1.enabled());
        EXPECT_TRUE(form.lblStatus.foreColor());
    });
    EXPECT_EQ(stored("PhoneBook"), "Office");
    EXPECT_EQ(network.dialled, (Lines{"Office"}));
}

TEST_F(DiallingTest, TheLineSaysHowItGetsOn) {
    show([&] {
        connect();
        network.line->status(3, "Device connected");
        EXPECT_EQ(form.lblStatus.text(), "3: Device connected");
        network.line->progress(0, "a", "b", "c", "d");
        EXPECT_EQ(form.lblStatus.text(), "3: Device connected");
        network.line->progress(7, "a", "b", "c", "d");
        EXPECT_EQ(form.lblStatus.text(), "7  a b cd");
        network.line->error(691, "Access DENIED.");
        EXPECT_EQ(form.lblStatus.text(), "Could not logon using your phone book (691)");
        EXPECT_TRUE(form.bPhoneBookConnect.enabled());
        EXPECT_FALSE(form.lblStatus.foreColor());

        connect();
        form.Option1[1].userClick();
        network.line->error(691, "Access denied.");
        EXPECT_EQ(form.lblStatus.text(), "691: Access denied.");
        form.Option1[0].userClick();
        network.atDial = [](ports::DialEvents& line) { line.error(633, "The port is in use."); };
        connect();
        EXPECT_EQ(form.lblStatus.text(), "633: The port is in use.");
        EXPECT_TRUE(form.bPhoneBookConnect.enabled());
    });
}

TEST_F(DiallingTest, AConnectionClosesTheFormInDialModeOnlyAndEveryCancelHangsUp) {
    show([&] {
        connect();
        network.connect();
        EXPECT_FALSE(form.shown());
    });
    EXPECT_FALSE(form.Cancelled);
    EXPECT_EQ(network.line, nullptr);
    EXPECT_EQ(network.hangUps, 0);

    form.DialMode = false;
    show([&] {
        form.tabPages.userSelect(kDialTab);
        connect();
        network.connect();
        EXPECT_TRUE(form.shown());
    });
    EXPECT_EQ(network.hangUps, 0) << "the connection stands";

    const std::function<void()> kWays[] = {[&] { form.bCancel1.userClick(); }, [&] { form.bCancel2.userClick(); },
                                           [&] { form.userKey(ui::key::kEscape); }, [&] { form.userClose(); }};
    for (const auto& leave : kWays) {
        network.hangUps = 0;
        show([&] {
            form.tabPages.userSelect(kDialTab);
            connect();
            leave();
            EXPECT_FALSE(form.shown());
        });
        EXPECT_TRUE(form.Cancelled);
        EXPECT_EQ(network.hangUps, 1);
    }
    show([&] {
        form.tabPages.userSelect(kDialTab);
        connect();
        form.cmdOK.userClick();
    });
    EXPECT_EQ(network.hangUps, 1);
    EXPECT_EQ(network.line, nullptr) << "nobody is left to be told";
}

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
