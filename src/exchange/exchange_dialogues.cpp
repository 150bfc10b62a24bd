// What an exchange that fails asks the user: the alternate address, the settings, dialling.
#include "base/resume_next.h"
#include "exchange/answer.h"
#include "exchange/exchange.h"
#include "exchange/failure_text.h"
#include "login/frmMsgBox.h"
#include "sendreceive/ucSendReceive.h"

namespace exchange {

Exchange::Next Exchange::afterNoConnection(const Result& failure) {
    if (alternateAccepted()) {
        return Next::Repeat;
    }
    makeErrorFolder();
    const Failure told = describeFailure(answerText(m_https.response(), m_https.contentType(), m_services.ansi),
                                         failure.description, m_request.url, !m_https.settings.proxyServer.empty());
    if (askWithButtons(told.text + (told.keepAnswer ? writeErrorFile() : ""), told.settingsHelp) == Next::GiveUp) {
        return Next::GiveUp;
    }
    log("Sub SendReceive --> Error end of 20152");
    return Next::Repeat;
}

Exchange::Next Exchange::afterOtherFailure(const Result& failure) {
    if (m_control.gCancelled) {
        m_control.DisconnectFromInternet();
        log("Cancelled");
        return Next::GiveUp;
    }
    return setting("Dialup", "DialType") == "Manual" ? askForManualDial(failure) : dial(failure);
}

Exchange::Next Exchange::askForManualDial(const Result& failure) {
    if (alternateAccepted()) {
        return Next::Repeat;
    }
    log(std::to_string(failure.number) + "start Error, but manual" + failure.description);
    if (askWithButtons("Could not connect to your supplier, please dial up to the internet manually, then try "
                       "send/receive again\r\n\r\n(" +
                           failure.description + ")",
                       true) == Next::GiveUp) {
        return Next::GiveUp;
    }
    log("Sub SendReceive --> End Error, but manual: " + numbered(failure));
    return Next::Repeat;
}

Exchange::Next Exchange::dial(const Result& failure) {
    log(std::to_string(failure.number) + "Start ELSE Error, but try dial up" + failure.description);
    const bool connected = m_control.LoadfrmDial(true);
    m_services.desktop.doEvents();
    if (!connected) {
        return Next::GiveUp;
    }
    log("Sub SendReceive --> End Error, but auto dial: " + numbered(failure));
    return Next::Repeat;
}

bool Exchange::alternateAccepted() {
    if (m_control.gUsingAlternate || m_alternate.empty() ||
        m_services.desktop.messageBox("Could not connect, do you want to use the alternate web address?",
                                      ui::Buttons::YesNo) != ui::Answer::Yes) {
        return false;
    }
    log("Sub SendReceive --> Using Alternate:" + m_request.url);
    switchToAlternate();
    return true;
}

void Exchange::switchToAlternate() {
    m_control.sWebAddress = m_request.url = m_alternate;
    m_control.gUsingAlternate = true;
}

// Closed without a button counts as Cancel: the request would be repeated for ever.
Exchange::Next Exchange::askWithButtons(const std::string& text, bool settingsHelp) {
    login::frmMsgBox form(m_services.desktop);
    form.load();
    form.lblMessage.setText(text);
    form.cmdButton1.setText("Cancel");
    if (settingsHelp) {
        form.cmdButton2.setText("Dial Settings");
        form.cmdButton3.setText("User Settings");
    }
    form.showModal();
    if (form.Button2Pressed) {
        static_cast<void>(m_control.LoadfrmDial(false));
    } else if (form.Button3Pressed) {
        m_control.askForOptions(m_request.url);
    } else {
        return Next::GiveUp;
    }
    return Next::Repeat;
}

// Support looks for it, although the answers are kept in another one.
void Exchange::makeErrorFolder() {
    base::resumeNext([&] {
        const std::string folder = m_host.text("gQuorVantisPath") + "Error\\";
        if (!m_services.fileSystem.folderExists(folder)) {
            m_services.fileSystem.createFolder(folder);
        }
    });
}

std::string Exchange::numbered(const Result& result) {
    return std::to_string(result.number) + result.description;
}

} // namespace exchange
