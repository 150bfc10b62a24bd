// What follows when an exchange got no answer: the alternate address, the settings, dialling.
#include "base/resume_next.h"
#include "exchange/answer.h"
#include "exchange/exchange.h"
#include "ports/ensure_folder.h"

namespace exchange {

Exchange::Next Exchange::afterNoConnection(const HttpsResult& result) {
    if (alternateAccepted()) {
        return Next::Repeat;
    }
    makeErrorFolder();
    Failure failure = describe(result);
    if (failure.kind == Failure::Kind::Supplier) {
        failure.answerFile = keepAnswer();
    }
    if (m_context.dialogues.afterFailure(failure) == Next::GiveUp) {
        return Next::GiveUp;
    }
    log("Sub SendReceive --> Error end of 20152");
    return Next::Repeat;
}

Exchange::Next Exchange::afterOtherFailure(const HttpsResult& result) {
    if (m_context.session.gCancelled) {
        m_context.dialogues.disconnect();
        log("Cancelled");
        return Next::GiveUp;
    }
    return setting("Dialup", "DialType") == "Manual" ? dialByHand(result) : dial(result);
}

Exchange::Next Exchange::dialByHand(const HttpsResult& result) {
    if (alternateAccepted()) {
        return Next::Repeat;
    }
    log(std::to_string(result.number) + "start Error, but manual" + result.description);
    if (m_context.dialogues.afterFailure(describe(result)) == Next::GiveUp) {
        return Next::GiveUp;
    }
    log("Sub SendReceive --> End Error, but manual: " + std::to_string(result.number) + result.description);
    return Next::Repeat;
}

Exchange::Next Exchange::dial(const HttpsResult& result) {
    log(std::to_string(result.number) + "Start ELSE Error, but try dial up" + result.description);
    const bool connected = m_context.dialogues.dial();
    m_context.observer.idle();
    if (!connected) {
        return Next::GiveUp;
    }
    log("Sub SendReceive --> End Error, but auto dial: " + std::to_string(result.number) + result.description);
    return Next::Repeat;
}

Failure Exchange::describe(const HttpsResult& result) const {
    return describeFailure(result.number, result.description, m_request.url, answer(),
                           !m_context.https.settings.proxyServer.empty());
}

bool Exchange::alternateAccepted() {
    if (m_context.session.gUsingAlternate || m_alternate.empty() || !m_context.dialogues.useAlternateAddress()) {
        return false;
    }
    log("Sub SendReceive --> Using Alternate:" + m_request.url);
    switchToAlternate();
    return true;
}

void Exchange::switchToAlternate() {
    m_context.session.sWebAddress = m_request.url = m_alternate;
    m_context.session.gUsingAlternate = true;
}

// Support looks for it, although the answers are kept in another one.
void Exchange::makeErrorFolder() {
    base::resumeNext(
        [&] { ports::requireFolder(m_context.services.fileSystem, m_host.text("gQuorVantisPath") + "Error"); });
}

} // namespace exchange
