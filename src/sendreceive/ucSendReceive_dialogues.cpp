// The questions of an exchange, put to the person in front of the control.
#include "base/scope_exit.h"
#include "base/text.h"
#include "login/frmMsgBox.h"
#include "sendreceive/ucSendReceive.h"
#include "ui/report_errors.h"

namespace sendreceive {

void ucSendReceive::tell(const std::string& text) {
    m_services.desktop.messageBox(text);
}

void ucSendReceive::report(std::string_view routine, const base::RuntimeError& error) {
    ui::showError(m_services.desktop, routine, error);
}

// However the login ends, the process's one form for it is unloaded and lets go of the host's objects, which must not
// live as long as it does.
std::optional<exchange::Login> ucSendReceive::logIn() {
    login::frmLogin& form = m_services.login;
    const base::ScopeExit over([&form] {
        form.unload();
        form.host = {};
    });
    form.UserName = session.globals().text("gProfileNumber");
    form.host = {session.globals(), session.account()};
    form.OKPressed = false;
    form.load();
    form.showModal();
    if (!form.OKPressed) {
        return std::nullopt;
    }
    return exchange::Login{base::upperCase(form.Password), base::upperCase(form.NewPassword)};
}

bool ucSendReceive::useAlternateAddress() {
    return m_services.desktop.messageBox("Could not connect, do you want to use the alternate web address?",
                                         ui::Buttons::YesNo) == ui::Answer::Yes;
}

// Closed without a button counts as Cancel: the request would be repeated for ever.
ucSendReceive::Next ucSendReceive::afterFailure(const exchange::Failure& failure) {
    login::frmMsgBox form(m_services.desktop);
    form.load();
    form.lblMessage.setText(failure.text());
    form.cmdButton1.setText("Cancel");
    if (failure.settingsMayHelp()) {
        form.cmdButton2.setText("Dial Settings");
        form.cmdButton3.setText("User Settings");
    }
    form.showModal();
    if (form.Button2Pressed) {
        static_cast<void>(LoadfrmDial(false));
    } else if (form.Button3Pressed) {
        fire([&](Events& listener) { listener.OpenfrmOptions(failure.url); });
    } else {
        return Next::GiveUp;
    }
    return Next::Repeat;
}

void ucSendReceive::offerToDisconnect() {
    if (m_dialer && m_dialer->connected() &&
        m_services.desktop.messageBox("Do you want to disconect from the internet?", ui::Buttons::YesNo) ==
            ui::Answer::Yes) {
        DisconnectFromInternet();
    }
}

void ucSendReceive::DisconnectFromInternet() {
    reportErrors("DisconnectFromInternet", [&] {
        dialer().hangUp();
        closeConnectionSettings();
    });
}

void ucSendReceive::announceSetUp() {
    m_services.desktop.messageBox("A. You need to upgrade QuorVantis: \r\n"
                                  "  1) Press OK to start the upgrade.\r\n"
                                  "  2) When the upgrade is complete QuorVantis will re-start.");
}

void ucSendReceive::closeConnectionSettings() {
    if (m_dialForm != nullptr) {
        m_dialForm->unload();
    }
}

ports::Dialer& ucSendReceive::dialer() {
    if (!m_dialer) {
        m_dialer = m_services.engine.network.createDialer();
    }
    return *m_dialer;
}

} // namespace sendreceive
