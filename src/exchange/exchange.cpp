#include "exchange/exchange.h"

#include "base/resume_next.h"
#include "base/runtime_error.h"
#include "base/text.h"
#include "exchange/answer.h"
#include "exchange/error_files.h"
#include "exchange/request_text.h"
#include "sendreceive/ucSendReceive.h"

#include <utility>

namespace exchange {

using connection::HttpsControl;
namespace https_error = connection::https_error;

Exchange::Exchange(sendreceive::ucSendReceive& control, const Services& services, HttpsControl& https,
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
    return exchange::writeErrorFile(m_services.desktop, m_services.fileSystem, m_services.clock,
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

} // namespace exchange
