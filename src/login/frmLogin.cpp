#include "login/frmLogin.h"

#include "base/number.h"
#include "base/resume_next.h"
#include "base/text.h"
#include "login/password_change_date.h"
#include "ui/desktop.h"

#include <algorithm>
#include <chrono>
#include <cmath>

namespace login {
namespace {

constexpr std::size_t kShortestPassword = 3; // UTF-16 units
constexpr double kDefaultDays = 30;
constexpr double kMostDays = 1'000'000; // keeps sums of days far from overflow, and never comes due

// How long a password may last; halves go to the even number, as automation rounds.
std::chrono::days passwordAge(const host::HostGlobals& globals) {
    const double days = base::toNumber(globals.option("PasswChangeDays").value_or("")).value_or(kDefaultDays);
    return std::chrono::days{static_cast<int>(std::nearbyint(std::clamp(days, -kMostDays, kMostDays)))};
}

} // namespace

frmLogin::frmLogin(const LoginServices& services) : Form(services.desktop, "frmLogin"), m_services(services) {
    setCaption("Login");
    lblLabels[0].setText("User name:");
    lblLabels[1].setText("&Password:");
    lblLabels[2].setText("&New password:");
    lblLabels[3].setText("&Verify password:");
    chChangePassword.setText("&Change password");
    cmdOK.setText("OK");
    cmdCancel.setText("Cancel");

    chChangePassword.onClick = [this] { chChangePassword_Click(); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
}

// What was typed before an unload is forgotten; only the public fields are not.
void frmLogin::Form_Load() {
    ForceChange = false; // else the box could not be unticked
    chChangePassword.setChecked(false);
    enableNewPassword(false);
    txtPassword.setText("");
    fillIn();
}

void frmLogin::Form_Activate() {
    OKPressed = false; // a showing that ends in any other way than OK must not send
    fillIn();
    applyChangeRule();
    setFocus(txtPassword);
}

void frmLogin::fillIn() {
    const bool otherUser = m_savedFor && *m_savedFor != UserName;
    if (otherUser) {
        txtPassword.setText("");
    } else if (!SavedPassword.empty()) {
        txtPassword.setText(SavedPassword);
    }
    txtUserName.setText(UserName);
}

// The clock starts at the first login under the rule, and nothing here starts it again: once the password is overdue, a
// change is demanded at every login.
void frmLogin::applyChangeRule() {
    ForceChange = false;
    if (base::upperCase(host.globals.option("ForcePasswChange").value_or("")) != "TRUE") {
        chChangePassword.setChecked(false);
        return;
    }
    const std::chrono::days age = passwordAge(host.globals);
    const PasswordChangeDate lastChange(m_services.settings, m_services.protection,
                                        {.gSettingString = host.globals.text("gSettingString"),
                                         .gWebService = host.globals.text("gWebService"),
                                         .gProfileNumber = host.globals.text("gProfileNumber"),
                                         .account = host.account.account()});
    const base::DateTime now = m_services.clock.now();
    const auto day = lastChange.read();
    if (!day) {
        // A store that takes nothing must not keep the user from logging in.
        base::resumeNext([&] { lastChange.record(now); });
        return;
    }
    const bool overdue = base::dayOf(now) > *day + age;
    chChangePassword.setChecked(overdue);
    ForceChange = overdue;
}

void frmLogin::Form_KeyPress(char16_t& key) {
    if (key == ui::key::kReturn) {
        key = 0;
        cmdOK_Click();
    } else if (key == 0) { // the one key that cancels; Escape, pressed by mistake, must not end the run
        cmdCancel_Click();
    }
}

void frmLogin::chChangePassword_Click() {
    if (!chChangePassword.checked() && ForceChange) {
        desktop().messageBox("You are required to change your password now");
        chChangePassword.setChecked(true);
        return;
    }
    enableNewPassword(chChangePassword.checked());
}

void frmLogin::enableNewPassword(bool enabled) {
    for (ui::TextBox* const box : {&tnewpassword, &tverifypassword}) {
        if (!enabled) {
            box->setText("");
        }
        box->setEnabled(enabled);
        box->setBackColor(enabled ? ui::color::kWindowBackground : ui::color::kButtonFace);
    }
}

bool frmLogin::acceptsNewPassword() {
    if (tnewpassword.text().empty()) {
        desktop().messageBox("Please enter a new password", ui::Buttons::Ok, ui::Icon::Critical);
    } else if (base::utf16Length(tnewpassword.text()) < kShortestPassword) {
        desktop().messageBox("Password must be at least 3 characters");
    } else if (tnewpassword.text() != tverifypassword.text()) { // letter case counts here, though not afterwards
        desktop().messageBox("New password and verify password must be the same", ui::Buttons::Ok, ui::Icon::Critical);
    } else {
        return true;
    }
    return false;
}

void frmLogin::cmdOK_Click() {
    if (chChangePassword.checked() && !acceptsNewPassword()) {
        setFocus(tnewpassword);
        return;
    }
    Password = base::upperCase(txtPassword.text());
    SavedPassword = Password;
    m_savedFor = UserName;
    NewPassword = base::upperCase(tnewpassword.text());
    OKPressed = true;
    hide();
}

void frmLogin::cmdCancel_Click() {
    OKPressed = false;
    hide();
}

} // namespace login
