#include "exchange/engine.h"

#include "base/scope_exit.h"
#include "exchange/file_downloads.h"
#include "exchange/report_errors.h"
#include "exchange/run.h"
#include "exchange/setup_program.h"
#include "exchange/upgrade.h"

namespace exchange {

Engine::Engine(const Services& services, Session& session, Dialogues& dialogues, RunObserver& observer)
    : m_services(services), m_session(session), m_dialogues(dialogues), m_observer(observer) {}

void Engine::run(const std::shared_ptr<Commands>& commands, const Ticked& ticked) {
    if (!m_state.running()) {
        Run(*this, commands, ticked).perform();
    }
}

ExchangeResult Engine::SendReceive(const ExchangeRequest& request, bool forceDownload) {
    ExchangeResult result{.url = request.url};
    reportErrors(m_dialogues, "SendReceive", [&] {
        exclusively("SendReceive", [&] {
            result = Exchange(context(), request).run();
            if (result.succeeded && !request.dontLoadResults) {
                m_observer.trace("Sub SendReceive: Check for file downloads");
                const std::string dataFolder = m_session.globals().text("gQuorVantisPath");
                static_cast<void>(placeFiles(request.results, true, dataFolder, forceDownload));
                m_observer.trace("Sub SendReceive: SendReceive = true");
            }
        });
    });
    return result;
}

bool Engine::CheckForFileDownloads(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                                   const std::string& dataFolder, bool forceDownload) {
    bool all = false;
    exclusively("CheckForFileDownloads", [&] { all = placeFiles(results, doDownloads, dataFolder, forceDownload); });
    return all;
}

bool Engine::placeFiles(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                        const std::string& dataFolder, bool forceDownload) {
    bool all = true;
    const bool finished = reportErrors(m_dialogues, "CheckForFileDownloads", [&] {
        if (!results || results->selectNodes("//file").empty()) {
            return;
        }
        if (!doDownloads || !m_session.bDownloadFiles) {
            m_observer.trace("Sub CheckForFileDownloads: not wanted");
            return;
        }
        all = findUpgrade(*results) ? Upgrade(context()).download(*results, dataFolder)
                                    : FileDownloads(context(), dataFolder, forceDownload).run(*results);
    });
    return all && finished;
}

bool Engine::DownloadUpgrade(const xml::XmlDocument& results, const std::string& workingFolder) {
    bool fetched = false;
    exclusively("DownloadUpgrade", [&] { fetched = Upgrade(context()).download(results, workingFolder); });
    return fetched;
}

void Engine::RunSetup() {
    m_dialogues.announceSetUp();
    const std::string program = findSetupProgram(m_services.fileSystem, m_session.MustRunSetupName);
    if (program.empty()) {
        return;
    }
    const host::HostGlobals host = m_session.globals();
    const auto held = SetupCheck(m_services.programs, m_services.fileSystem, host).beforeStart(program);
    host.put("gBusyWithUpgrade", true);
    m_dialogues.setUpStarts();
    if (!m_exchanging) { // what set-up may want to replace is let go of
        m_https.reset();
    }
    m_services.programs.start(program);
}

void Engine::cancel() noexcept {
    m_session.gCancelled = true;
    if (m_state.running()) {
        m_state.phase = RunState::Phase::Cancelling;
    }
    if (m_https) {
        m_https->cancel();
    }
}

Context Engine::context() {
    if (!m_https) {
        m_https = std::make_unique<connection::HttpsControl>(m_services.network, m_services.fileSystem);
    }
    return {m_session, m_services, m_dialogues, m_observer, *m_https};
}

// A second exchange would take the transport and the dialogues away from under the first: a host's timer may ask for
// one while a request runs or a dialogue is open.
void Engine::exclusively(std::string_view routine, const std::function<void()>& body) {
    if (m_exchanging) {
        m_observer.trace("Sub " + std::string(routine) + ": busy");
        return;
    }
    m_exchanging = true;
    const base::ScopeExit over([this] { m_exchanging = false; });
    if (!m_state.running()) {
        m_session.gCancelled = false;
    }
    body();
}

} // namespace exchange
