// Dialling a phone-book entry: what is remembered, what the status line says, and when it is hung up.
#include "connection/frmDial_fixture.h"

namespace connection {
namespace {

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

} // namespace
} // namespace connection
