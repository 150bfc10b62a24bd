// The engine under the send/receive control: exchanges, downloads and upgrades, one at a time, without a control and
// without a window. Whoever uses it answers its questions (Dialogues) and is told how it gets on (RunObserver).
#pragma once

#include "exchange/commands.h"
#include "exchange/context.h"
#include "exchange/exchange.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace exchange {

class Engine {
public:
    // None is owned; all outlive the engine.
    Engine(const Services& services, Session& session, Dialogues& dialogues, RunObserver& observer);
    Engine(const Engine&) = delete;
    Engine& operator=(const Engine&) = delete;
    ~Engine() = default;

    // Whether a command of this name was chosen.
    using Ticked = std::function<bool(const std::string& name)>;
    // A whole run: login, the commands that are required or ticked, one by one, and what follows them. Everything that
    // goes wrong is reported. Not while another one runs.
    void run(const std::shared_ptr<Commands>& commands, const Ticked& ticked);
    [[nodiscard]] const RunState& state() const noexcept { return m_state; }

    // One exchange, and the files that its answer names; what goes wrong is reported. While another one is on its way
    // it only leaves a trace, as do the next two.
    [[nodiscard]] ExchangeResult SendReceive(const ExchangeRequest& request, bool forceDownload);
    // Fetches the files that an answer names and puts them where they belong (see file_downloads.h); an upgrade's as
    // DownloadUpgrade does. `dataFolder` with its final backslash; `forceDownload`: also those that are here already.
    // True unless one that is needed could not be had.
    [[nodiscard]] bool CheckForFileDownloads(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                                             const std::string& dataFolder, bool forceDownload);
    // Fetches all files of an answer with an upgrade command (see upgrade.h). `workingFolder`, with its final
    // backslash, is made when it is not there. True when the last of them was fetched. Raises what making folders
    // raises.
    [[nodiscard]] bool DownloadUpgrade(const xml::XmlDocument& results, const std::string& workingFolder);
    // Tells of the upgrade and starts the set-up program that was fetched, else the one in the current folder, with the
    // host's gBusyWithUpgrade set. Raises 70 for a program that is not signed as the host requires, and 438 for a host
    // without that property; nothing is started then.
    void RunSetup();
    void SetHTTPSettings() { Exchange::SetHTTPSettings(context()); }
    [[nodiscard]] const ports::HttpSettings& httpSettings() { return context().https.settings; }

    // Ends what runs at its next step, at once when that waits for a server.
    void cancel() noexcept;

private:
    friend class Run;

    [[nodiscard]] Context context();
    // Runs the body unless an exchange is on its way: then it leaves a trace.
    void exclusively(std::string_view routine, const std::function<void()>& body);
    [[nodiscard]] bool placeFiles(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                                  const std::string& dataFolder, bool forceDownload);

    const Services& m_services;
    Session& m_session;
    Dialogues& m_dialogues;
    RunObserver& m_observer;
    std::unique_ptr<connection::HttpsControl> m_https; // made when it is needed
    RunState m_state;
    bool m_exchanging = false; // an exchange is on its way, with all that belongs to it
};

} // namespace exchange
