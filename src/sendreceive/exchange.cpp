#include "sendreceive/exchange.h"

#include "base/resume_next.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "login/frmMsgBox.h"
#include "sendreceive/answer.h"
#include "sendreceive/error_files.h"
#include "sendreceive/failure_text.h"
#include "sendreceive/request_text.h"
#include "sendreceive/ucSendReceive.h"

#include <utility>

namespace sendreceive {
namespace {

using connection::HttpsControl;
namespace https_error = connection::https_error;

std::string inParentheses(const std::string& description) {
    return "(" + description + ")";
}

std::string numbered(const connection::HttpsResult& result) {
    return std::to_string(result.number) + result.description;
}

} // namespace

Exchange::Exchange(ucSendReceive& control, const Services& services, HttpsControl& https,
                   const ExchangeRequest& request)
    : m_control(control), m_services(services), m_https(https), m_request(request), m_host(control.Globals) {
    // A file is fetched from where it is: the alternate address is that of the service.
    if (m_request.url == m_control.sWebAddress) {
        m_alternate = setting(m_host.text("gWebService"), "AltURL");
    }
    watch();
}

Exchange::~Exchange() {
    m_https.onHeader = nullptr;
    m_https.onTransferProgress = nullptr;
    m_https.onTransferEnd = nullptr;
    m_https.onError = nullptr;
    m_https.onIdle = nullptr;
}

bool Exchange::run() {
    prepare();
    if (!perform()) {
        return false;
    }
    if (m_request.posted != nullptr) {
        *m_request.posted = std::move(m_https.PostData); // now: the files that the answer names are fetched by it too
    }
    return check();
}

void Exchange::prepare() {
    m_control.gUsingAlternate = false;
    stampLastDate();
    log("Sub SendReceive --> Set variables");
    m_https.PostData.clear();
    m_https.LocalFile.clear();
    m_https.Resume = m_request.resume;
    std::string text;
    if (m_request.command) {
        text = m_request.command->xml();
        log("Sub SendReceive --> SendCommand\r\n" + loggedText(*m_request.command, text));
    }
    if (!m_request.dontLoadResults) {
        log("Sub SendReceive --> Set xml");
        m_https.PostData = postedText(std::move(text));
    }
    if (!m_request.localFile.empty()) {
        log(m_request.localFile + "Sub SendReceive --> Set local files:"); // in this order
        m_https.LocalFile = m_request.localFile;
    }
    useWhatWasAskedFor();
}

// So that the server need send only what is new. What goes wrong here is no reason not to ask it.
void Exchange::stampLastDate() {
    if (!m_request.command) {
        return;
    }
    base::resumeNext([&] {
        if (xml::XmlNode element = firstElement(m_request.command->documentElement())) {
            element.setAttribute("lastdate", m_control.GetLastDate(element.getAttribute("name"),
                                                                   element.getAttribute("lastdateaccountspecific")));
        }
    });
}

void Exchange::useWhatWasAskedFor() {
    m_https.UseWinInet = setting("Dialup", "UseWinInet") == "1";
    if (m_https.UseWinInet) {
        log("Sub SendReceive: Set usewininet");
    }
    if (m_control.cAlternate.checked() && !m_alternate.empty()) {
        switchToAlternate();
        m_services.desktop.doEvents();
    }
}

bool Exchange::perform() {
    for (;;) {
        const Result result = attempt();
        if (result.number == 0) {
            return true;
        }
        // A Cancel that comes as the connection fails is answered by no dialogue.
        const bool noConnection = result.number == https_error::kNoConnection && !m_control.gCancelled;
        const Next next = noConnection ? afterNoConnection(result) : afterOtherFailure(result);
        if (next == Next::GiveUp) {
            return false;
        }
    }
}

Exchange::Result Exchange::attempt() {
    m_request.url = connection::withEncodedBlanks(m_request.url);
    log("Sub SendReceive --> Set URL:" + m_request.url);
    m_https.URL = m_request.url;
    log("Sub SendReceive --> Set proxy");
    m_control.SetHTTPSettings();
    log("Sub SendReceive --> Post or Get:" + m_request.method);
    m_https.TimeOut = m_services.timeOut;
    m_control.beginTransfer();
    Result result;
    if (m_control.gCancelled) {
        result = {https_error::kCancelled, ""};
    } else if (m_request.method == "POST") {
        result = m_https.perform(HttpsControl::Action::Post);
    } else if (m_request.method == "GET") {
        result = m_https.perform(HttpsControl::Action::Get);
    } else {
        m_https.forgetAnswer();
    }
    log("Sub SendReceive --> Post error code: " + numbered(result));
    return result;
}

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
                       "send/receive again\r\n\r\n" +
                           inParentheses(failure.description),
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

bool Exchange::check() {
    const std::string answer = answerText(m_https.response(), m_https.contentType(), m_services.ansi);
    if (const std::optional<SystemDown> down = systemDown(answer)) {
        log("Sub SendReceive: System is currently off");
        tell(*down);
        return false;
    }
    if (m_request.dontLoadResults) {
        log("Sub SendReceive: Don't Load results");
        if (answer.empty()) {
            box("Error 001: Error from supplier server, please report this error to your supplier");
            log("Sub SendReceive: error 001");
        }
        return true; // also without an answer: it is reported, but no reason to stop
    }
    if (!load()) {
        return false;
    }
    log("Sub SendReceive: Check for errors in results");
    if (const std::optional<std::string> error = errorIn(*m_request.results)) {
        box(*error);
        return false;
    }
    log("Sub SendReceive: Check for file downloads");
    m_control.checkFiles(m_request.results, true, m_host.text("gQuorVantisPath"), m_request.forceDownload);
    log("Sub SendReceive: SendReceive = true");
    return true;
}

void Exchange::tell(const SystemDown& down) {
    box(down.message);
    log("Message received back: '" + down.note + "'");
}

bool Exchange::load() {
    log("Sub SendReceive: Load results to dom");
    if (!m_request.results) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    if (m_request.results->load(m_https.response(), xml::DocTypePolicy::Refuse) && !isWebPage(*m_request.results)) {
        return true;
    }
    box("Error 002: Could not connect to server. Please report: " + writeErrorFile());
    log("Sub SendReceive: Error 002");
    return false;
}

std::string Exchange::writeErrorFile() {
    return sendreceive::writeErrorFile(m_services.desktop, m_services.fileSystem, m_services.clock,
                                       m_host.text("gQuorVantisPath"), m_https.response());
}

void Exchange::watch() {
    m_https.onHeader = [this](std::string_view field, std::string_view value) {
        if (base::equalInUpperCase(field, "CONTENT-LENGTH") && !value.empty()) {
            m_control.announceLength(value);
        }
    };
    m_https.onTransferProgress = [this](std::int64_t bytesSoFar, std::string_view) {
        m_control.showTransfer(bytesSoFar);
    };
    m_https.onTransferEnd = [this](bool complete) {
        if (complete) {
            m_control.barProgress.setBarWidth(ui::FramedBar::kFrameWidth);
        }
    };
    m_https.onError = [this](std::int32_t, const std::string& description) {
        box("Error in download : " + description);
    };
    m_https.onIdle = [this] { m_services.desktop.doEvents(); };
}

std::string Exchange::setting(std::string_view section, std::string_view key) const {
    return m_services.settings.get(m_host.text("gSettingString"), section, key);
}

void Exchange::log(const std::string& text) {
    m_control.WriteSingleLog(text, false);
}

void Exchange::box(const std::string& text) {
    m_services.desktop.messageBox(text);
}

} // namespace sendreceive
