// The connection settings as their user and the store see them: what is stored when.
#include "connection/frmDial_fixture.h"

namespace connection {
namespace {

constexpr std::string_view kNoPhoneBook =
    "QuorVantis will not be able to connect to the internet for you as \r\nyou do not have any standard windows dial "
    "up connections.";

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

} // namespace
} // namespace connection
