// Asks for the password of the supplier's server, and for a new one when the user wants that or the host's options
// demand it. It knows no password to compare with: the server judges.
#pragma once

#include "host/host_account.h"
#include "host/host_globals.h"
#include "ports/clock.h"
#include "ports/data_protection.h"
#include "ports/settings.h"
#include "ui/controls.h"
#include "ui/form.h"

#include <array>
#include <optional>
#include <string>

namespace login {

// What the login form works with. None is owned; all outlive the form.
struct LoginServices {
    ui::Desktop& desktop;
    ports::Settings& settings;
    ports::DataProtection& protection;
    ports::Clock& clock;
};

// On whose behalf the user logs in.
struct LoginHost {
    host::HostGlobals globals; // options, gSettingString, gWebService, gProfileNumber
    host::HostAccount account;
};

// One object serves all logins of a process: its public fields live on when it is unloaded, so that the user need not
// type the password again for every run.
class frmLogin : public ui::Form {
public:
    explicit frmLogin(const LoginServices& services);

    // Set by the caller before each showing. Showing raises what the host's objects raise.
    LoginHost host;

    bool OKPressed = false;
    std::string Password;    // upper-cased
    std::string NewPassword; // upper-cased; empty: the password stays
    // Upper-cased; stands in the password field of later showings, unless that is another user's.
    std::string SavedPassword;
    std::string UserName; // set by the caller before each showing
    bool ForceChange = false;

    std::array<ui::Label, 4> lblLabels{
        {{*this, "lblLabels0"}, {*this, "lblLabels1"}, {*this, "lblLabels2"}, {*this, "lblLabels3"}}};
    ui::TextBox txtUserName{*this, "txtUserName"};
    ui::TextBox txtPassword{*this, "txtPassword"};
    ui::CheckBox chChangePassword{*this, "chChangePassword"};
    ui::TextBox tnewpassword{*this, "tnewpassword"};
    ui::TextBox tverifypassword{*this, "tverifypassword"};
    ui::Button cmdOK{*this, "cmdOK"};
    ui::Button cmdCancel{*this, "cmdCancel"};

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyPress(char16_t& key) override; // Return is OK anywhere
    void Form_CloseBox() override { cmdCancel_Click(); }

private:
    void chChangePassword_Click();
    void cmdOK_Click();
    void cmdCancel_Click();

    void fillIn();
    void applyChangeRule();
    void enableNewPassword(bool enabled);
    // Shows what is wrong with the new password, if anything is.
    [[nodiscard]] bool acceptsNewPassword();

    LoginServices m_services;
    std::optional<std::string> m_savedFor; // whose password SavedPassword is
};

} // namespace login
