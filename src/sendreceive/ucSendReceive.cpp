#include "sendreceive/ucSendReceive.h"

#include "base/runtime_error.h"
#include "exchange/exchange.h"
#include "exchange/trace_file.h"
#include "host/host_account.h"
#include "sendreceive/command_list.h"
#include "ui/report_errors.h"

#include <algorithm>
#include <utility>

namespace sendreceive {
namespace {

// The connection settings while they are on the screen, for who wants to close them.
class Shown {
public:
    Shown(connection::frmDial*& where, connection::frmDial& form) : m_where(where) { where = &form; }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;
    ~Shown() { m_where = nullptr; }

private:
    connection::frmDial*& m_where;
};

// An exchange is on its way as long as it lives.
class Exchanging {
public:
    explicit Exchanging(bool& flag) : m_flag(flag) { flag = true; }
    Exchanging(const Exchanging&) = delete;
    Exchanging& operator=(const Exchanging&) = delete;
    ~Exchanging() { m_flag = false; }

private:
    bool& m_flag;
};

} // namespace

std::shared_ptr<ucSendReceive> ucSendReceive::create(const exchange::Services& services) {
    return std::shared_ptr<ucSendReceive>(new ucSendReceive(services));
}

ucSendReceive::ucSendReceive(const exchange::Services& services)
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
    cmdOK.onClick = [this] { cmdOK_Click(); };
    cmdCancel.onClick = [this] { cmdCancel_Click(); };
}

void ucSendReceive::setDomCommands(std::shared_ptr<xml::XmlDocument> document,
                                   std::unique_ptr<HostCommandDocument> original) {
    m_commands = std::move(document);
    m_hostCommands = std::move(original);
}

void ucSendReceive::SetDownloadVisible(bool visible) {
    cDownloadFiles.setVisible(visible);
}

bool ucSendReceive::LoadfrmDial(bool dialMode) {
    const auto self = shared_from_this();
    bool accepted = false;
    reportErrors("LoadfrmDial", [&] {
        const host::HostGlobals host = globals();
        connection::frmDial form(
            {m_services.desktop, m_services.fileSystem, m_services.settings, m_services.network, dialer(),
             [this](std::string_view line) { WriteSingleLog(std::string(line), false); }},
            {host.text("gSettingString"), host.text("gWebService"), sWebAddress, m_services.componentFolder});
        form.DialMode = dialMode;
        form.load();
        const Shown shown(m_dialForm, form);
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
    return exchange({url, method, results, request, localFile, dontLoadResults, forceDownload, false});
}

bool ucSendReceive::exchange(const exchange::ExchangeRequest& request) {
    const auto self = shared_from_this();
    bool succeeded = false;
    reportErrors("SendReceive", [&] {
        exclusively("SendReceive", [&] { succeeded = exchange::Exchange(*this, m_services, https(), request).run(); });
    });
    return succeeded;
}

void ucSendReceive::DisconnectFromInternet() {
    reportErrors("DisconnectFromInternet", [&] {
        dialer().hangUp();
        if (m_dialForm != nullptr) {
            m_dialForm->unload();
        }
    });
}

void ucSendReceive::LoadCommands() {
    if (m_busy) { // the run walks the list
        WriteSingleLog("Sub LoadCommands: busy", false);
        return;
    }
    reportErrors("LoadCommands", [&] {
        const host::HostGlobals host = globals();
        const std::string service = host.text("gWebService");
        cAlternate.setVisible(!service.empty() &&
                              !m_services.settings.get(host.text("gSettingString"), service, "AltURL").empty());
        if (m_hostCommands) {
            m_commands = m_hostCommands->read();
        }
        if (!m_commands) {
            throw base::RuntimeError(base::error::kObjectNotSet);
        }
        exchange::LastDates dates = accountDates(host).read();
        fillCommandList(lvCommands, *m_commands, [&](const std::string& name, const std::string& accountSpecific) {
            return dates.GetLastDate(name, accountSpecific);
        });
    });
}

void ucSendReceive::lvCommands_ItemCheck(std::size_t row) {
    reportErrors("lvCommands_ItemCheck", [&] {
        const bool required = findCommand(*m_commands, lvCommands.key(row)).getAttribute("required") == "yes";
        if (required && !lvCommands.checked(row)) {
            m_services.desktop.messageBox("This download is required, can not de-select...");
            lvCommands.setChecked(row, true);
        }
    });
}

void ucSendReceive::SetHTTPSettings() {
    reportErrors("SetHTTPSettings", [&] {
        const host::HostGlobals host = globals();
        connection::setHttpSettings(https().settings, m_services.settings,
                                    {host.text("gSettingString"), host.text("gWebService"), cAlternate.checked()},
                                    [&](std::string_view line) { WriteSingleLog(std::string(line), false); });
    });
}

// A host that names no data folder, or one that is not there, turns tracing off.
void ucSendReceive::WriteSingleLog(const std::string& text, bool restart) {
    reportErrors("WriteSingleLog", [&] {
        const base::Variant folder = globals().valueIfPresent("gQuorVantisPath");
        exchange::TraceFile({m_services.fileSystem, m_services.clock, m_services.ansi, m_services.locale})
            .WriteSingleLog(base::toText(folder), text, restart);
    });
}

std::string ucSendReceive::GetLastDate(const std::string& name, const std::string& accountSpecific) {
    return accountDates(globals()).GetLastDate(name, accountSpecific);
}

void ucSendReceive::askForOptions(const std::string& url) {
    fire([&](Events& listener) { listener.OpenfrmOptions(url); });
}

void ucSendReceive::askToRegister(const std::string& file) {
    fire([&](Events& listener) { listener.RegisterServer(file); });
}

void ucSendReceive::askToUnregister(const std::string& file) {
    fire([&](Events& listener) { listener.UnregisterServer(file); });
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

void ucSendReceive::stop() noexcept {
    gCancelled = true;
    if (m_https) {
        m_https->cancel();
    }
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

// A second exchange would take the transport and the dialogues away from under the first: a host's timer may ask for
// one while a request runs or a dialogue is open.
void ucSendReceive::exclusively(std::string_view routine, const std::function<void()>& body) {
    if (m_exchanging) {
        WriteSingleLog("Sub " + std::string(routine) + ": busy", false);
        return;
    }
    const Exchanging now(m_exchanging);
    if (!m_busy) {
        gCancelled = false;
    }
    body();
}

bool ucSendReceive::reportErrors(std::string_view routine, const std::function<void()>& body) {
    return ui::reportErrors(m_services.desktop, routine, body);
}

host::HostGlobals ucSendReceive::globals() const {
    return host::HostGlobals(Globals);
}

connection::HttpsControl& ucSendReceive::https() {
    if (!m_https) {
        m_https = std::make_unique<connection::HttpsControl>(m_services.network, m_services.fileSystem);
    }
    return *m_https;
}

ports::Dialer& ucSendReceive::dialer() {
    if (!m_dialer) {
        m_dialer = m_services.network.createDialer();
    }
    return *m_dialer;
}

exchange::AccountDates ucSendReceive::accountDates(const host::HostGlobals& host) {
    return {{m_services.desktop, m_services.clock,
             [this](std::string_view line) { WriteSingleLog(std::string(line), false); }},
            host,
            host::HostAccount(host, Account)};
}

} // namespace sendreceive
