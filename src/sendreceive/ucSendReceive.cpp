#include "sendreceive/ucSendReceive.h"

#include "base/runtime_error.h"
#include "base/text.h"
#include "entry/host_account.h"
#include "entry/modStyles.h"
#include "sendreceive/command_list.h"
#include "sendreceive/trace_file.h"
#include "ui/form.h"
#include "ui/report_errors.h"

#include <algorithm>
#include <initializer_list>
#include <optional>
#include <utility>

namespace sendreceive {
namespace {

// The bar's full length leaves this much of the frame free; twips.
constexpr std::int32_t kFullBar = ui::FramedBar::kFrameWidth - 30;

[[noreturn]] void notInThisVersion() {
    throw base::RuntimeError(base::error::kMemberNotSupported);
}

// Lends the process's one login form to a run. However that ends, the form is unloaded and lets go of the host's
// objects, which must not live as long as it does.
class LoginLoan {
public:
    explicit LoginLoan(login::frmLogin& form) : m_form(form) {}
    LoginLoan(const LoginLoan&) = delete;
    LoginLoan& operator=(const LoginLoan&) = delete;
    ~LoginLoan() {
        m_form.unload();
        m_form.host = {};
    }

private:
    login::frmLogin& m_form;
};

} // namespace

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

bool ucSendReceive::LoadfrmDial(bool) {
    notInThisVersion();
}

bool ucSendReceive::DownloadFile(const std::string&, const std::string&) {
    notInThisVersion();
}

bool ucSendReceive::SendReceive(std::string&, const std::string&, const std::shared_ptr<xml::XmlDocument>&,
                                const std::shared_ptr<xml::XmlDocument>&, const std::string&, bool, bool) {
    notInThisVersion();
}

bool ucSendReceive::DownloadUpgrade(const std::shared_ptr<xml::XmlDocument>&, const std::string&, const std::string&) {
    notInThisVersion();
}

void ucSendReceive::DisconnectFromInternet() {
    notInThisVersion();
}

bool ucSendReceive::CheckForFileDownloads(const std::shared_ptr<xml::XmlDocument>&, bool, const std::string&, bool) {
    notInThisVersion();
}

void ucSendReceive::RunSetup() {
    notInThisVersion();
}

void ucSendReceive::LoadCommands() {
    if (m_busy) { // the run walks the list
        WriteSingleLog("Sub LoadCommands: busy", false);
        return;
    }
    reportErrors("LoadCommands", [&] {
        const entry::HostGlobals host = globals();
        const std::string service = host.text("gWebService");
        cAlternate.setVisible(!service.empty() &&
                              !m_services.settings.get(host.text("gSettingString"), service, "AltURL").empty());
        if (m_hostCommands) {
            m_commands = m_hostCommands->read();
        }
        if (!m_commands) {
            throw base::RuntimeError(base::error::kObjectNotSet);
        }
        LastDates dates = accountDates(host).read();
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

void ucSendReceive::SetMessage(const std::string& text) {
    reportErrors("SetMessage", [&] {
        WriteSingleLog("Sub SetMessage --> " + text, false);
        lProgress.setText(text);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::SetProgressBar(std::int32_t value) {
    reportErrors("SetProgressBar", [&] {
        if (m_announcedLength == 0) {
            throw base::RuntimeError(base::error::kDivisionByZero);
        }
        barProgress.setBarWidth(std::int64_t{ui::FramedBar::kFrameWidth} * value / m_announcedLength);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::SetProgressBarMax() {
    reportErrors("SetProgressBarMax", [&] {
        barProgress.setBarWidth(kFullBar);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::SetProgressBarMinimum() {
    reportErrors("SetProgressBarMinimum", [&] {
        barProgress.setBarWidth(0);
        m_services.desktop.doEvents();
    });
}

void ucSendReceive::UserControl_SetImage(std::shared_ptr<const base::Picture> picture) {
    picImage.setPicture(std::move(picture));
}

void ucSendReceive::UserControl_SetImage(const std::string& file) {
    reportErrors("UserControl_SetImage", [&] {
        auto picture = m_services.pictures.decode(file, kPictureExtent, kPictureExtent);
        picImage.setPicture(picture ? std::make_shared<const base::Picture>(*std::move(picture)) : nullptr);
    });
}

void ucSendReceive::Setcolors() {
    reportErrors("Setcolors", [&] {
        const auto paint = [host = globals()](std::string_view option, ui::Color standard,
                                              std::initializer_list<ui::Control*> controls) {
            const std::optional<std::string> name = host.option(option);
            for (ui::Control* const control : name ? controls : std::initializer_list<ui::Control*>{}) {
                // An unknown name leaves the colour as it is.
                const ui::Color now = control->backColor().value_or(standard);
                const auto color = static_cast<ui::Color>(entry::colorFromName(*name, static_cast<std::int32_t>(now)));
                if (color != now) {
                    control->setBackColor(color);
                }
            }
        };
        paint("FrameColor", ui::color::kLight3d, {&barProgress});
        paint("ButtonColor", ui::color::kButtonFace, {&cmdOK, &cmdCancel});
    });
}

void ucSendReceive::SetHTTPSettings() {
    reportErrors("SetHTTPSettings", [&] {
        const entry::HostGlobals host = globals();
        connection::setHttpSettings(m_http, m_services.settings,
                                    {host.text("gSettingString"), host.text("gWebService"), cAlternate.checked()},
                                    [&](std::string_view line) { WriteSingleLog(std::string(line), false); });
    });
}

// A host that names no data folder, or one that is not there, turns tracing off.
void ucSendReceive::WriteSingleLog(const std::string& text, bool restart) {
    reportErrors("WriteSingleLog", [&] {
        const base::Variant folder = globals().valueIfPresent("gQuorVantisPath");
        TraceFile({m_services.fileSystem, m_services.clock, m_services.ansi, m_services.locale})
            .WriteSingleLog(base::toText(folder), text, restart);
    });
}

bool ucSendReceive::logIn() {
    login::frmLogin& form = m_services.login;
    const LoginLoan loan(form);
    const entry::HostGlobals host = globals();
    form.UserName = host.text("gProfileNumber");
    form.host = {host, entry::HostAccount(host, Account)};
    form.OKPressed = false;
    form.load();
    form.showModal();
    if (form.OKPressed) {
        writePassword(base::upperCase(form.Password), base::upperCase(form.NewPassword));
    }
    return form.OKPressed;
}

// A new password of an earlier run must not go out again.
void ucSendReceive::writePassword(const std::string& password, const std::string& newPassword) {
    if (!m_commands) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    setRootAttribute("password", password);
    if (!newPassword.empty()) {
        setRootAttribute("newpassword", newPassword);
    } else if (m_commands->documentElement().hasAttribute("newpassword")) {
        m_commands->documentElement().removeAttribute("newpassword");
        if (m_hostCommands) {
            m_hostCommands->removeRootAttribute("newpassword");
        }
    }
}

void ucSendReceive::setRootAttribute(std::string_view name, const std::string& value) {
    m_commands->documentElement().setAttribute(name, value);
    if (m_hostCommands) {
        m_hostCommands->setRootAttribute(name, value);
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

void ucSendReceive::cmdCancel_Click() {
    reportErrors("cmdCancel_Click", [&] { fire([](Events& listener) { listener.Cancelled(); }); });
}

void ucSendReceive::UserControl_KeyPress(char16_t& key) {
    if (key == ui::key::kEscape) {
        key = 0;
        cmdCancel_Click();
    }
}

void ucSendReceive::cmdOK_Click() {
    const auto self = shared_from_this();
    setBusy(true);
    reportErrors("cmdOK_Click", [&] {
        if (bLoginNotRequired || logIn()) {
            WriteSingleLog("Sub cmdOK_Click: Start Send Receive", true);
            m_services.desktop.messageBox("The exchange with the supplier is not part of this version.");
        }
    });
    setBusy(false);
}

void ucSendReceive::setBusy(bool busy) {
    m_busy = busy;
    cmdOK.setEnabled(!busy);
    lvCommands.setEnabled(!busy);
    if (!busy) {
        setFocus(lvCommands); // where it was, before it went to Cancel
    }
}

bool ucSendReceive::reportErrors(std::string_view routine, const std::function<void()>& body) {
    return ui::reportErrors(m_services.desktop, routine, body);
}

entry::HostGlobals ucSendReceive::globals() const {
    return entry::HostGlobals(Globals);
}

AccountDates ucSendReceive::accountDates(const entry::HostGlobals& host) {
    return {{m_services.desktop, m_services.clock,
             [this](std::string_view line) { WriteSingleLog(std::string(line), false); }},
            host,
            entry::HostAccount(host, Account)};
}

} // namespace sendreceive
