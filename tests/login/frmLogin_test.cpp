// The login form as its user, its caller and the host's options see it.
#include "login/frmLogin.h"

#include "base/runtime_error.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_data_protection.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_late_bound.h"
#include "fakes/fake_settings.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace login {
namespace {

class frmLoginTest : public testing::Test {
protected:
    frmLoginTest() {
        globals->addProperty("gSettingString", "Shop");
        globals->addProperty("gWebService", "http://supplier/ws");
        globals->addProperty("gProfileNumber", "4711");
        globals->addMethod("GetValue", [this](const auto& arguments) -> base::Variant {
            const auto found = options.find(base::toText(arguments.at(0)));
            return found == options.end() ? base::Variant() : found->second;
        });
        form.host = {host::HostGlobals(globals), host::HostAccount(host::HostGlobals(globals))};
        form.UserName = "4711";
    }

    // As the caller does before every run.
    void show(const std::function<void()>& user) {
        desktop.whenShown("frmLogin", user);
        form.load();
        form.showModal();
    }
    void passBy() {
        show([&] { form.cmdCancel.userClick(); });
    }
    // Whether today's showing demands a change.
    bool forced() {
        passBy();
        EXPECT_TRUE(form.chChangePassword.checked() || !form.ForceChange);
        return form.ForceChange;
    }
    std::string recorded() { return settings.get("Shop", "http://supplier/ws4711", "PSD"); }
    void advance(int days) { clock.advance(std::chrono::hours{24 * days}); }

    fakes::FakeDesktop desktop;
    fakes::FakeSettings settings;
    fakes::FakeDataProtection protection;
    fakes::FakeClock clock;
    std::shared_ptr<fakes::FakeLateBound> globals = std::make_shared<fakes::FakeLateBound>();
    std::map<std::string, base::Variant> options;
    frmLogin form{{desktop, settings, protection, clock}};
};

TEST_F(frmLoginTest, PasswordsReachTheCallerInUpperCaseWhateverTheyHold) {
    const struct {
        std::string typed, password;
    } kRows[] = {{"secret", "SECRET"},
                 {"", ""},
                 {"\"o'neil\" & </commands>/>", "\"O'NEIL\" & </COMMANDS>/>"},
                 {"caf\xC3\xA9 \xC3\x9F", "CAF\xC3\x89 \xC3\x9F"},
                 {std::string(1000, 'p'), std::string(1000, 'P')}};
    for (const auto& row : kRows) {
        show([&] {
            EXPECT_EQ(form.txtUserName.text(), "4711");
            EXPECT_EQ(form.focused(), &form.txtPassword);
            form.txtPassword.userText(row.typed);
            form.userKey(ui::key::kReturn);
        });
        EXPECT_TRUE(form.OKPressed);
        EXPECT_EQ(form.Password, row.password);
        EXPECT_EQ(form.SavedPassword, row.password);
        EXPECT_EQ(form.NewPassword, "");
    }
}

TEST_F(frmLoginTest, ANewPasswordIsCheckedBeforeTheFormCloses) {
    show([&] {
        EXPECT_FALSE(form.tnewpassword.enabled());
        EXPECT_EQ(form.tnewpassword.backColor(), ui::color::kButtonFace);
        form.chChangePassword.userClick();
        EXPECT_TRUE(form.tverifypassword.enabled());
        EXPECT_EQ(form.tverifypassword.backColor(), ui::color::kWindowBackground);

        const struct {
            std::string newPassword, verification, message;
            ui::Icon icon;
        } kRefused[] = {
            {"", "", "Please enter a new password", ui::Icon::Critical},
            {"ab", "ab", "Password must be at least 3 characters", ui::Icon::None},
            {"\xC3\xA9\xC3\xA9", "x", "Password must be at least 3 characters", ui::Icon::None},
            {"abc", "ABC", "New password and verify password must be the same", ui::Icon::Critical},
        };
        for (const auto& row : kRefused) {
            form.tnewpassword.userText(row.newPassword);
            form.tverifypassword.userText(row.verification);
            desktop.whenAsked(row.message, ui::Answer::Ok, row.icon);
            form.cmdOK.userClick();
            EXPECT_EQ(desktop.lastTitle(), ui::kDefaultTitle);
            EXPECT_TRUE(form.shown());
            EXPECT_EQ(form.focused(), &form.tnewpassword);
            EXPECT_FALSE(form.OKPressed);
        }
        form.tverifypassword.userText("abc");
        form.cmdOK.userClick();
    });
    EXPECT_TRUE(form.OKPressed);
    EXPECT_EQ(form.NewPassword, "ABC");

    show([&] { // unticking takes the new password back
        form.chChangePassword.setChecked(true);
        form.tnewpassword.userText("xyz");
        form.chChangePassword.userClick();
        EXPECT_EQ(form.tnewpassword.text(), "");
        EXPECT_FALSE(form.tnewpassword.enabled());
        form.cmdOK.userClick();
    });
    EXPECT_EQ(form.NewPassword, "");
}

TEST_F(frmLoginTest, EveryOtherWayOutIsCancelAndEscapeIsNone) {
    show([&] { form.cmdOK.userClick(); });
    ASSERT_TRUE(form.OKPressed);
    const struct {
        const char* way;
        std::function<void()> leave;
    } kWays[] = {{"Cancel", [&] { form.cmdCancel.userClick(); }},
                 {"X", [&] { form.userClose(); }},
                 {"character 0", [&] { form.userKey(0); }},
                 {"the end of the program", [&] { form.hide(); }}};
    for (const auto& row : kWays) {
        form.OKPressed = true; // as an earlier login left it
        show([&] {
            EXPECT_EQ(form.userKey(ui::key::kEscape), ui::key::kEscape);
            EXPECT_TRUE(form.shown());
            row.leave();
        });
        EXPECT_FALSE(form.OKPressed) << row.way;
    }
}

TEST_F(frmLoginTest, ThePasswordIsOfferedAgainToTheSameUserAlone) {
    show([&] {
        form.txtPassword.userText("secret");
        form.chChangePassword.userClick();
        form.tnewpassword.userText("newer");
        form.tverifypassword.userText("newer");
        form.cmdOK.userClick();
    });
    form.unload();
    show([&] {
        EXPECT_EQ(form.txtPassword.text(), "SECRET");
        EXPECT_EQ(form.tnewpassword.text(), "");
        EXPECT_FALSE(form.chChangePassword.checked());
        form.txtPassword.userText("typed, then cancelled");
        form.cmdCancel.userClick();
    });
    form.UserName = "4712";
    for (const bool afterAnUnload : {false, true}) {
        if (afterAnUnload) {
            form.unload();
        }
        show([&] {
            EXPECT_EQ(form.txtPassword.text(), "");
            EXPECT_EQ(form.txtUserName.text(), "4712");
            form.cmdCancel.userClick();
        });
    }
    form.UserName = "4711";
    show([&] {
        EXPECT_EQ(form.txtPassword.text(), "SECRET");
        form.cmdCancel.userClick();
    });
}

TEST_F(frmLoginTest, AChangeIsDemandedFromTheDayAfterTheLastOnePlusTheDays) {
    const struct {
        const char* days;
        int last; // day on which it is not yet due
    } kRows[] = {{"30", 30}, {"x", 30}, {"", 30}, {" 7 ", 7}, {"0", 0}, {"2.5", 2}, {"99999999999", 5000}};
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.days);
        settings.set("Shop", "http://supplier/ws4711", "PSD", "");
        options = {{"ForcePasswChange", "true"}, {"PasswChangeDays", row.days}};
        EXPECT_FALSE(forced()) << "only recorded";
        const std::string record = recorded();
        EXPECT_NE(record, "");
        advance(row.last);
        EXPECT_FALSE(forced());
        if (row.last < 5000) {
            advance(1);
            EXPECT_TRUE(forced());
            advance(1);
            EXPECT_TRUE(forced()) << "a change does not start the clock again";
        }
        EXPECT_EQ(recorded(), record);
    }
    options["ForcePasswChange"] = "FALSE";
    EXPECT_FALSE(forced());
}

TEST_F(frmLoginTest, ADemandedChangeCannotBeUntickedAndDoesNotHauntTheNextLoad) {
    options = {{"ForcePasswChange", true}, {"PasswChangeDays", std::int32_t{1}}};
    passBy();
    advance(2);
    show([&] {
        EXPECT_TRUE(form.ForceChange);
        form.tnewpassword.userText("abc");
        desktop.whenAsked("You are required to change your password now");
        form.chChangePassword.userClick();
        EXPECT_TRUE(form.chChangePassword.checked());
        EXPECT_EQ(form.tnewpassword.text(), "abc");
        form.cmdCancel.userClick();
    });
    form.unload();
    options.clear();
    EXPECT_FALSE(forced()); // without a box
}

TEST_F(frmLoginTest, TheRecordIsUnreadableAndGoodForOneLoginOnly) {
    options = {{"ForcePasswChange", "TRUE"}, {"PasswChangeDays", "1"}};
    passBy();
    const std::string record = recorded();
    EXPECT_EQ(record.find("2026"), std::string::npos);
    EXPECT_EQ(record.find_first_not_of("0123456789abcdef"), std::string::npos);
    advance(10);
    EXPECT_TRUE(forced());

    for (std::string damaged : {std::string("20200101"), record.substr(2), record + "0", std::string("garbage"),
                                std::string(record).replace(20, 1, record[20] == '0' ? "1" : "0")}) {
        settings.set("Shop", "http://supplier/ws4711", "PSD", damaged);
        EXPECT_FALSE(forced()) << damaged;
        EXPECT_NE(recorded(), damaged) << "today is recorded instead";
    }
    settings.set("Shop", "http://supplier/ws4711", "PSD", record);
    EXPECT_TRUE(forced());
    const auto account = std::make_shared<fakes::FakeLateBound>();
    account->addProperty("account", "other");
    form.host.account = host::HostAccount(form.host.globals, account);
    EXPECT_FALSE(forced());
}

TEST_F(frmLoginTest, NothingIsDemandedWhereNothingCanBeKept) {
    options = {{"ForcePasswChange", "TRUE"}, {"PasswChangeDays", "1"}};
    globals->addProperty("gSettingString", "");
    passBy();
    advance(10);
    EXPECT_FALSE(forced());
    EXPECT_TRUE(settings.all().empty());

    globals->addProperty("gSettingString", "Shop");
    settings.failWrites(base::error::kPathFileAccess);
    EXPECT_FALSE(forced());
    settings.failWrites(0);
    protection.fail(base::error::kPathFileAccess);
    EXPECT_FALSE(forced());
    EXPECT_TRUE(settings.all().empty());
}

TEST_F(frmLoginTest, WhatTheHostRaisesReachesTheCallerAndNothingIsShown) {
    globals->failOn("GetValue", base::error::kOverflow);
    form.OKPressed = true;
    form.load();
    EXPECT_THROW(form.showModal(), base::RuntimeError);
    EXPECT_FALSE(form.shown());
    EXPECT_FALSE(form.OKPressed);

    form.host = {};
    passBy(); // a host without globals has no options
}

} // namespace
} // namespace login
