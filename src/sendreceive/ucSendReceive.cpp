#include "sendreceive/ucSendReceive.h"

#include "base/runtime_error.h"
#include "base/scope_exit.h"
#include "exchange/account_dates.h"
#include "exchange/trace_file.h"
#include "sendreceive/command_list.h"
#include "ui/report_errors.h"

#include <algorithm>
#include <utility>

namespace sendreceive {

std::shared_ptr<ucSendReceive> ucSendReceive::create(const Services& services) {
    return std::shared_ptr<ucSendReceive>(new ucSendReceive(services));
}

ucSendReceive::ucSendReceive(const Services& services)
    : UserControl("ucSendReceive"), lvCommands(*this, "lvCommands", commandColumns()), m_services(services) {
    cAlternate.setText("Use &alternate web address");
    cAlternate.setVisible(false);
    cDownloadFiles.setText("Do not &download files");
    cDownloadFiles.setVisible(false);
    cmdOK.setText("OK");
    cmdCancel.setText("Cancel");
    lvCommands.anchors = {true, true, true, true};
    lProgress.anchors = barProgress.anchors = {true, false, true, true};
    cAlternate.anchors = cDownloadFiles.anchors = picImage.anchors = {true, false, false, true};
    cmdOK.anchors = cmdCancel.anchors = {false, false, true, true};
    lvCommands.onItemCheck = [this](std::size_t row) { lvCommands_ItemCheck(row); };
    cAlternate.onClick = [this] { cAlternate_Click(); };
    cDownloadFiles.onClick = [this] { cDownloadFiles_Click(); };
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
}

std::shared_ptr<xml::XmlDocument> ucSendReceive::domCommands() const noexcept {
    return m_commands ? m_commands->document() : nullptr;
}

void ucSendReceive::setDomCommands(std::shared_ptr<xml::XmlDocument> document,
                                   std::unique_ptr<exchange::HostCommandDocument> original) {
    m_commands = document ? std::make_shared<exchange::Commands>(std::move(document), std::move(original)) : nullptr;
}

void ucSendReceive::SetDownloadVisible(bool visible) {
    cDownloadFiles.setVisible(visible);
}

bool ucSendReceive::LoadfrmDial(bool dialMode) {
    const auto self = shared_from_this();
    bool accepted = false;
    reportErrors("LoadfrmDial", [&] {
        const host::HostGlobals host = session.globals();
        const exchange::Services& services = m_services.engine;
        connection::frmDial form(
            {m_services.desktop, services.fileSystem, services.settings, services.network, dialer(),
             [this](std::string_view line) { trace(std::string(line)); }},
            {host.text("gSettingString"), host.text("gWebService"), session.sWebAddress, m_services.componentFolder});
        form.DialMode = dialMode;
        form.load();
        m_dialForm = &form;
        const base::ScopeExit left([this] { m_dialForm = nullptr; });
        form.showModal();
        accepted = !form.Cancelled;
    });
    return accepted;
}

bool ucSendReceive::DownloadFile(const std::string& url, const std::string& localFile) {
    std::string address = url;
    return SendReceive(address, "1", nullptr, nullptr, localFile, true, false);
}

bool ucSendReceive::SendReceive(std::string& url, const std::string& method,
                                const std::shared_ptr<xml::XmlDocument>& results,
                                const std::shared_ptr<xml::XmlDocument>& request, const std::string& localFile,
                                bool dontLoadResults, bool forceDownload) {
    const auto self = shared_from_this();
    exchange::ExchangeResult result = m_engine.SendReceive({.url = url,
                                                            .method = method,
                                                            .results = results,
                                                            .command = request,
                                                            .localFile = localFile,
                                                            .dontLoadResults = dontLoadResults},
                                                           forceDownload);
    url = std::move(result.url);
    return result.succeeded;
}

bool ucSendReceive::DownloadUpgrade(const std::shared_ptr<xml::XmlDocument>& results, const std::string& folderName,
                                    const std::string& rootPath) {
    if (!results) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    const auto self = shared_from_this();
    return m_engine.DownloadUpgrade(*results, rootPath + folderName + "\\");
}

bool ucSendReceive::CheckForFileDownloads(const std::shared_ptr<xml::XmlDocument>& results, bool doDownloads,
                                          const std::string& dataFolder, bool forceDownload) {
    const auto self = shared_from_this();
    return m_engine.CheckForFileDownloads(results, doDownloads, dataFolder, forceDownload);
}

void ucSendReceive::RunSetup() {
    const auto self = shared_from_this();
    m_engine.RunSetup();
}

void ucSendReceive::LoadCommands() {
    if (m_engine.state().running()) { // the run walks the list
        trace("Sub LoadCommands: busy");
        return;
    }
    reportErrors("LoadCommands", [&] {
        const host::HostGlobals host = session.globals();
        const std::string service = host.text("gWebService");
        cAlternate.setVisible(!service.empty() &&
                              !m_services.engine.settings.get(host.text("gSettingString"), service, "AltURL").empty());
        if (m_commands) {
            m_commands->refresh();
        }
        if (!domCommands()) {
            throw base::RuntimeError(base::error::kObjectNotSet);
        }
        exchange::LastDates dates = exchange::AccountDates(*this, *this, m_services.engine.clock, session).read();
        fillCommandList(lvCommands, *domCommands(), [&](const std::string& name, const std::string& accountSpecific) {
            return dates.GetLastDate(name, accountSpecific);
        });
    });
}

void ucSendReceive::lvCommands_ItemCheck(std::size_t row) {
    reportErrors("lvCommands_ItemCheck", [&] {
        const bool required = findCommand(*domCommands(), lvCommands.key(row)).getAttribute("required") == "yes";
        if (required && !lvCommands.checked(row)) {
            m_services.desktop.messageBox("This download is required, can not de-select...");
            lvCommands.setChecked(row, true);
        }
    });
}

// A host that names no data folder, or one that is not there, turns tracing off.
void ucSendReceive::WriteSingleLog(const std::string& text, bool restart) {
    reportErrors("WriteSingleLog", [&] {
        const base::Variant folder = session.globals().valueIfPresent("gQuorVantisPath");
        const exchange::Services& services = m_services.engine;
        exchange::TraceFile({services.fileSystem, services.clock, services.ansi, m_services.locale})
            .WriteSingleLog(base::toText(folder), text, restart);
    });
}

void ucSendReceive::cmdOK_Click() {
    const auto self = shared_from_this();
    m_engine.run(m_commands, [this](const std::string& name) { // a command without a row is not ticked
        const std::optional<std::size_t> row = lvCommands.find(name);
        return row && lvCommands.checked(*row);
    });
}

void ucSendReceive::cmdCancel_Click() {
    stop();
    reportErrors("cmdCancel_Click", [&] { fire([](Events& listener) { listener.Cancelled(); }); });
}

void ucSendReceive::UserControl_KeyPress(char16_t& key) {
    if (key == ui::key::kEscape) {
        key = 0;
        cmdCancel_Click();
    }
}

void ucSendReceive::advise(Events& listener) {
    m_listeners.push_back(&listener);
}

void ucSendReceive::unadvise(Events& listener) {
    std::erase(m_listeners, &listener);
}

// Over a copy: a listener may leave, join others, or let go of the control.
void ucSendReceive::fire(const std::function<void(Events&)>& event) {
    const auto self = shared_from_this();
    for (Events* const listener : std::vector(m_listeners)) {
        if (std::ranges::find(m_listeners, listener) != m_listeners.end()) {
            event(*listener);
        }
    }
}

bool ucSendReceive::reportErrors(std::string_view routine, const std::function<void()>& body) {
    return ui::reportErrors(m_services.desktop, routine, body);
}

} // namespace sendreceive
