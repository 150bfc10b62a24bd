#include "exchange/exchange.h"

#include "base/number.h"
#include "base/resume_next.h"
#include "base/text.h"
#include "connection/http_settings.h"
#include "connection/web_address.h"
#include "exchange/account_dates.h"
#include "exchange/answer.h"
#include "exchange/error_files.h"
#include "exchange/report_errors.h"
#include "exchange/request_text.h"

#include <utility>

namespace exchange {
namespace {

using connection::HttpsControl;
namespace https_error = connection::https_error;

// A header's value in bytes; none for what is no length.
std::optional<std::int64_t> announcedLength(std::string_view value) {
    const double length = base::toNumber(value).value_or(0);
    constexpr double kLongest = 1e15; // beyond all transfers, within what the arithmetic holds
    return length >= 1 && length < kLongest ? std::optional(static_cast<std::int64_t>(length)) : std::nullopt;
}

} // namespace

Exchange::Exchange(const Context& context, ExchangeRequest request)
    : m_context(context), m_request(std::move(request)), m_host(context.session.globals()) {
    // A file is fetched from where it is: the alternate address is that of the service.
    if (m_request.url == m_context.session.sWebAddress) {
        m_service = m_request.url;
        m_alternate = setting(m_host.text("gWebService"), "AltURL");
    }
    watch();
}

Exchange::~Exchange() {
    m_context.https.onHeader = nullptr;
    m_context.https.onTransferProgress = nullptr;
    m_context.https.onTransferEnd = nullptr;
    m_context.https.onError = nullptr;
    m_context.https.onIdle = nullptr;
}

ExchangeResult Exchange::run() {
    ExchangeResult result;
    prepare();
    if (perform()) {
        result.posted = std::move(m_context.https.PostData); // now: the files that the answer names come this way too
        result.succeeded = check();
    }
    result.url = m_request.url;
    return result;
}

void Exchange::prepare() {
    HttpsControl& https = m_context.https;
    m_context.session.gUsingAlternate = false;
    stampLastDate();
    log("Sub SendReceive --> Set variables");
    https.PostData.clear();
    https.LocalFile.clear();
    https.Resume = m_request.resume;
    std::string text;
    if (m_request.command) {
        text = m_request.command->xml();
        log("Sub SendReceive --> SendCommand\r\n" + loggedText(*m_request.command, text));
    }
    if (!m_request.dontLoadResults) {
        log("Sub SendReceive --> Set xml");
        https.PostData = postedText(std::move(text));
    }
    if (!m_request.localFile.empty()) {
        log(m_request.localFile + "Sub SendReceive --> Set local files:"); // in this order
        https.LocalFile = m_request.localFile;
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
            const AccountDates dates(m_context.dialogues, m_context.observer, m_context.services.clock,
                                     m_context.session);
            element.setAttribute("lastdate", dates.GetLastDate(element.getAttribute("name"),
                                                               element.getAttribute("lastdateaccountspecific")));
        }
    });
}

void Exchange::useWhatWasAskedFor() {
    m_context.https.UseWinInet = setting("Dialup", "UseWinInet") == "1";
    if (m_context.https.UseWinInet) {
        log("Sub SendReceive: Set usewininet");
    }
    if (m_context.session.bAlternate && !m_alternate.empty()) {
        switchToAlternate();
        m_context.observer.idle();
    }
}

bool Exchange::perform() {
    for (;;) {
        const HttpsResult result = attempt();
        if (result.number == 0) {
            return true;
        }
        // A Cancel that comes as the connection fails is answered by no dialogue.
        const bool noConnection = result.number == https_error::kNoConnection && !m_context.session.gCancelled;
        const Next next = noConnection ? afterNoConnection(result) : afterOtherFailure(result);
        if (next == Next::GiveUp) {
            return false;
        }
    }
}

Exchange::HttpsResult Exchange::attempt() {
    HttpsControl& https = m_context.https;
    // A host that was asked for its options may have another address since.
    if (!m_service.empty() && m_context.session.sWebAddress != m_service) {
        m_service = m_request.url = m_context.session.sWebAddress;
    }
    m_request.url = connection::withEncodedBlanks(m_request.url);
    log("Sub SendReceive --> Set URL:" + m_request.url);
    https.URL = m_request.url;
    log("Sub SendReceive --> Set proxy");
    SetHTTPSettings(m_context);
    log("Sub SendReceive --> Post or Get:" + m_request.method);
    https.TimeOut = m_context.services.timeOut;
    tell({});
    HttpsResult result;
    if (m_context.session.gCancelled) {
        result = {https_error::kCancelled, ""};
    } else if (m_request.method == "POST") {
        result = https.perform(HttpsControl::Action::Post);
    } else if (m_request.method == "GET") {
        result = https.perform(HttpsControl::Action::Get);
    } else {
        https.forgetAnswer();
    }
    log("Sub SendReceive --> Post error code: " + std::to_string(result.number) + result.description);
    return result;
}

void Exchange::SetHTTPSettings(const Context& context) {
    reportErrors(context.dialogues, "SetHTTPSettings", [&] {
        const host::HostGlobals host = context.session.globals();
        connection::setHttpSettings(context.https.settings, context.services.settings,
                                    {host.text("gSettingString"), host.text("gWebService"), context.session.bAlternate},
                                    [&](std::string_view line) { context.observer.trace(std::string(line)); });
    });
}

bool Exchange::check() {
    const std::string text = answer();
    if (const std::optional<SystemDown> down = systemDown(text)) {
        log("Sub SendReceive: System is currently off");
        m_context.dialogues.tell(down->message);
        log("Message received back: '" + down->note + "'");
        return false;
    }
    if (m_request.dontLoadResults) {
        log("Sub SendReceive: Don't Load results");
        if (text.empty()) {
            m_context.dialogues.tell(
                "Error 001: Error from supplier server, please report this error to your supplier");
            log("Sub SendReceive: error 001");
        }
        return true; // also without an answer: it is reported, but no reason to stop
    }
    if (!load()) {
        return false;
    }
    log("Sub SendReceive: Check for errors in results");
    if (const std::optional<std::string> error = errorIn(*m_request.results)) {
        m_context.dialogues.tell(*error);
        return false;
    }
    return true;
}

bool Exchange::load() {
    log("Sub SendReceive: Load results to dom");
    if (!m_request.results) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    if (m_request.results->load(m_context.https.response(), xml::DocTypePolicy::Refuse) &&
        !isWebPage(*m_request.results)) {
        return true;
    }
    m_context.dialogues.tell("Error 002: Could not connect to server. Please report: " + keepAnswer());
    log("Sub SendReceive: Error 002");
    return false;
}

// The answer in a file, for the user to hand to the supplier; its path.
std::string Exchange::keepAnswer() {
    return writeErrorFile(m_context.dialogues, m_context.services, m_host.text("gQuorVantisPath"),
                          m_context.https.response());
}

std::string Exchange::answer() const {
    return answerText(m_context.https.response(), m_context.https.contentType(), m_context.services.ansi);
}

void Exchange::watch() {
    m_context.https.onHeader = [this](std::string_view field, std::string_view value) {
        if (base::equalInUpperCase(field, "CONTENT-LENGTH") && !value.empty()) {
            tell({.total = announcedLength(value)});
        }
    };
    m_context.https.onTransferProgress = [this](std::int64_t bytesSoFar, std::string_view) {
        tell({.bytes = bytesSoFar, .total = m_transfer.total});
    };
    m_context.https.onTransferEnd = [this](bool complete) {
        tell({.bytes = m_transfer.bytes, .total = m_transfer.total, .complete = complete});
    };
    m_context.https.onError = [this](std::int32_t, const std::string& description) {
        m_context.dialogues.tell("Error in download : " + description);
    };
    m_context.https.onIdle = [this] { m_context.observer.idle(); };
}

void Exchange::tell(const Transfer& transfer) {
    m_transfer = transfer;
    m_context.observer.transfer(transfer);
}

std::string Exchange::setting(std::string_view section, std::string_view key) const {
    return m_context.services.settings.get(m_host.text("gSettingString"), section, key);
}

} // namespace exchange
