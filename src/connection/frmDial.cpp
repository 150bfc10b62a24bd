#include "connection/frmDial.h"

#include "base/resume_next.h"
#include "ui/desktop.h"
#include "ui/report_errors.h"

#include <charconv>
#include <optional>
#include <utility>
#include <vector>

namespace connection {
namespace {

constexpr std::string_view kSection = "Dialup";
constexpr std::string_view kOptional = "(optional)";
constexpr std::string_view kDefaultType = "0";

// The kinds in the order of their stored numbers.
struct FirewallKind {
    std::string_view name;
    std::string_view usualPort; // "": has none
    bool login;
    bool address;
};

constexpr std::array kFirewalls{
    FirewallKind{"Proxy", "8080", true, true},           FirewallKind{"SOCKS Version 4", "1080", false, true},
    FirewallKind{"SOCKS Version 5", "1080", true, true}, FirewallKind{"Basic Authentication", "", true, false},
    FirewallKind{"Tunnel Proxy", "80", true, true},
};

// None for any text that is not the number of a kind.
std::optional<std::size_t> toType(std::string_view text) {
    std::size_t index = 0;
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), index);
    const bool number = failure == std::errc() && end == text.data() + text.size();
    return number && index < kFirewalls.size() ? std::optional(index) : std::nullopt;
}

std::string_view toSetting(const ui::CheckBox& box) {
    return box.checked() ? "1" : "0";
}

} // namespace

frmDial::frmDial(const DialServices& services, DialHost host)
    : Form(services.desktop, "frmDial"),
      HTTPS1(services.network, services.fileSystem),
      m_services(services),
      m_host(std::move(host)) {
    setTexts();
    makePages();
    connectHandlers();
    txtPort.digitsOnly = true;
    txtTransfer.setBackColor(ui::color::kWindowBackground);
}

frmDial::~frmDial() {
    m_services.dialer.forget();
}

void frmDial::setTexts() {
    setCaption("Connection settings");
    Option1[0].setText("&Dial a connection of the phone book");
    Option1[1].setText("I connect to the internet &myself");
    Option1[2].setText("Connect through a pro&xy or the local network");
    lblPhonebook.setText("Phone &book:");
    bPhoneBookConnect.setText("Co&nnect");
    bCancel1.setText("Cancel dialing");
    chkProxy.setText("Use a proxy or &firewall");
    lblType.setText("T&ype:");
    lblServer.setText("&Server:");
    lblPort.setText("P&ort:");
    lblUserID.setText("&User name:");
    lblPasswordBox.setText("Pass&word:");
    chkUseWinInet.setText("Use the HTTP library of W&indows (WinInet)");
    lblURL.setText("&Address:");
    cmdGet.setText("&Get");
    chkEvents.setText("Show connection &events");
    cmdWinsock.setText("Win&Sock info");
    lblNotStored.setText("These settings are not kept: the program names no place for them.");
    cmdOK.setText("OK");
    bCancel2.setText("Cancel");
}

void frmDial::makePages() {
    tabPages.addTab("&Connection", {&Option1[0], &Option1[1], &Option1[2], &lblPhonebook, &lPhonebook,
                                    &bPhoneBookConnect, &bCancel1, &lblStatus});
    tabPages.addTab("&Proxy and firewall",
                    {&chkProxy, &lblType, &comType, &lblServer, &txtServer, &lblPort, &txtPort, &lblUserID, &txtUserID,
                     &lblUser, &lblPasswordBox, &txtPassword, &lblPassword, &chkUseWinInet});
    tabPages.addTab("&Test", {&lblURL, &txtURL, &cmdGet, &chkEvents, &cmdWinsock, &txtTransfer});
}

void frmDial::connectHandlers() {
    for (std::size_t index = 0; index < Option1.size(); ++index) {
        Option1[index].onClick = [this, index] { Option1_Click(index); };
    }
    bPhoneBookConnect.onClick = [this] { bPhoneBookConnect_Click(); };
    bCancel1.onClick = bCancel2.onClick = [this] { leave(true); };
    chkProxy.onClick = [this] { SetProxyFields(); };
    comType.onChange = [this] { comType_Click(); };
    chkUseWinInet.onClick = [this] { chkUseWinInet_Click(); };
    cmdGet.onClick = [this] { cmdGet_Click(); };
    cmdWinsock.onClick = [this] { cmdWinsock_Click(); };
    cmdOK.onClick = [this] { cmdOK_Click(); };

    HTTPS1.responseLimit = 0; // what is shown is enough
    HTTPS1.onIdle = [this] { desktop().doEvents(); };
    HTTPS1.onHeader = [this](auto field, auto value) { txtTransfer.append(m_transfer.header(field, value)); };
    HTTPS1.onTransferProgress = [this](auto, auto bytes) { txtTransfer.append(m_transfer.data(bytes)); };
    HTTPS1.onDisconnected = [this](auto code, const auto& description) { HTTPS1_Disconnected(code, description); };
}

// What is missing, or of another kind than expected, reads as "" and leaves the first choice.
void frmDial::Form_Load() {
    loadIcon();
    m_filling = true;
    loadProxyFields();
    m_filling = false;
    SetProxyFields();
    loadDialType();
    lblNotStored.setVisible(m_host.gSettingString.empty());
    txtTransfer.setText("");
    lblStatus.setText("");
    dialled();
    bCancel1.setEnabled(false);
    cmdGet.setEnabled(true);
}

void frmDial::Form_Activate() {
    Cancelled = true;
    tabPages.select(DialMode ? kDialPage : kProxyPage);
    setFocus(DialMode ? static_cast<ui::Control&>(bPhoneBookConnect) : tabPages);
}

void frmDial::loadIcon() {
    const std::string path = m_host.componentFolder + "\\QuorVantis.ico";
    setIconFile(m_services.fileSystem.fileExists(path) ? path : "");
}

void frmDial::loadProxyFields() {
    std::vector<std::string> types;
    for (const FirewallKind& kind : kFirewalls) {
        types.emplace_back(kind.name);
    }
    comType.setItems(std::move(types));
    if (setting("FirewallType").empty()) {
        base::resumeNext([&] { store("FirewallType", kDefaultType); });
    }
    const std::string type = setting("FirewallType");
    comType.setSelected(toType(type.empty() ? kDefaultType : type));
    txtServer.setText(setting("ProxyServer"));
    txtPort.setText(setting("ProxyPort"));
    txtUserID.setText(setting("ProxyUser"));
    txtPassword.setText(setting("ProxyPassword"));
    chkProxy.setChecked(setting("UseProxy") == "1");
    chkUseWinInet.setChecked(setting("UseWinInet") == "1");
}

void frmDial::UseSave() {
    store("UseProxy", toSetting(chkProxy));
    store("ProxyPort", txtPort.text());
    store("ProxyServer", txtServer.text());
    store("ProxyUser", txtUserID.text());
    store("ProxyPassword", txtPassword.text());
    store("FirewallType", comType.selected() ? std::to_string(*comType.selected()) : "-1");
    store("UseWinInet", toSetting(chkUseWinInet));
}

void frmDial::SetProxyFields() {
    const bool used = chkProxy.checked();
    if (used && !comType.selected()) {
        selectType(0);
    }
    const FirewallKind* const kind = used ? &kFirewalls[*comType.selected()] : nullptr;
    const bool optional = kind == kFirewalls.data();
    lblUser.setText(optional ? kOptional : "");
    lblPassword.setText(optional ? kOptional : "");
    const auto enable = [](bool enabled, std::initializer_list<ui::Control*> controls) {
        for (ui::Control* const control : controls) {
            control->setEnabled(enabled);
        }
    };
    enable(used, {&lblType, &comType});
    enable(kind != nullptr && kind->login, {&lblUserID, &txtUserID, &lblPasswordBox, &txtPassword});
    enable(kind != nullptr && kind->address, {&lblServer, &txtServer, &lblPort, &txtPort});
}

// Not as a user does: the port stays.
void frmDial::selectType(std::size_t index) {
    m_filling = true;
    comType.setSelected(index);
    m_filling = false;
}

void frmDial::comType_Click() {
    if (m_filling) {
        return;
    }
    if (const auto type = comType.selected(); type && !kFirewalls[*type].usualPort.empty()) {
        txtPort.setText(kFirewalls[*type].usualPort);
    }
    SetProxyFields();
}

void frmDial::chkUseWinInet_Click() {
    if (!m_filling) {
        ui::reportErrors(desktop(), "chkUseWinInet_Click", [&] { store("UseWinInet", toSetting(chkUseWinInet)); });
    }
}

void frmDial::Form_KeyPress(char16_t& key) {
    if (key == ui::key::kEscape) {
        key = 0;
        leave(true);
    } else if (key == ui::key::kReturn && focused() == &txtURL) {
        key = 0;
        if (cmdGet.enabled()) {
            cmdGet_Click();
        }
    }
}

void frmDial::cmdOK_Click() {
    if (ui::reportErrors(desktop(), "UseSave", [&] { UseSave(); })) {
        leave(false);
    }
}

// A connection that stands stays, whichever way the user leaves; one that is still dialled goes on only after OK.
void frmDial::leave(bool cancelled) {
    Cancelled = cancelled;
    HTTPS1.cancel();
    if (cancelled && m_dialling) {
        m_services.dialer.hangUp();
    }
    m_services.dialer.forget();
    unload();
}

std::string frmDial::setting(std::string_view key) const {
    return m_services.settings.get(m_host.gSettingString, kSection, key);
}

// Without a name for the settings the store takes nothing.
void frmDial::store(std::string_view key, std::string_view value) {
    m_services.settings.set(m_host.gSettingString, kSection, key, value);
}

} // namespace connection
