// The test page of the connection settings.
#include "base/text.h"
#include "connection/frmDial.h"
#include "connection/web_address.h"
#include "ui/desktop.h"
#include "ui/report_errors.h"

namespace connection {
namespace {

constexpr std::string_view kLineBreak = "\r\n";

std::string lines(std::initializer_list<std::string> all) {
    std::string text;
    for (const std::string& line : all) {
        text += (text.empty() ? "" : std::string(kLineBreak)) + line;
    }
    return text;
}

} // namespace

void frmDial::cmdGet_Click() {
    ui::reportErrors(desktop(), "TestUrl", [&] { TestUrl(); });
    cmdGet.setEnabled(true);
}

void frmDial::TestUrl() {
    if (txtURL.text().empty()) {
        txtURL.setText(m_host.testAddress);
    }
    UseSave();
    txtTransfer.setText("");
    m_transfer = {};
    cmdGet.setEnabled(false);
    SetHTTPSettings();
    HTTPS1.URL = withEncodedBlanks(base::trim(txtURL.text()));
    HTTPS1.UseWinInet = setting("UseWinInet") == "1";
    const HttpsResult result = HTTPS1.perform(HttpsControl::Action::Get);
    txtTransfer.append(m_transfer.end());
    if (result.number != 0) {
        HTTPS1_Error(result.number, result.description);
    }
    cmdGet.setEnabled(true);
}

void frmDial::SetHTTPSettings() {
    ui::reportErrors(desktop(), "SetHTTPSettings", [&] {
        setHttpSettings(HTTPS1.settings, m_services.settings,
                        {.gSettingString = m_host.gSettingString, .gWebService = m_host.gWebService}, m_services.log);
    });
}

void frmDial::HTTPS1_Disconnected(std::int32_t statusCode, const std::string& description) {
    if (tellsEvents()) {
        desktop().messageBox(
            lines({"HTTPS1_Disconnected", "StatusCode=" + std::to_string(statusCode), "Description=" + description}));
    }
}

void frmDial::HTTPS1_Error(std::int32_t errorCode, const std::string& description) {
    if (tellsEvents()) {
        desktop().messageBox(
            lines({"HTTPS1_Error", "ErrorCode=" + std::to_string(errorCode), "Description=" + description}));
    }
}

// Not to a user who has closed the form meanwhile.
bool frmDial::tellsEvents() const {
    return chkEvents.checked() && loaded();
}

void frmDial::cmdWinsock_Click() {
    const ports::SocketLayer sockets = m_services.network.socketLayer();
    desktop().messageBox(lines({"WinsockInfo=" + sockets.description,
                                std::string("WinsockLoaded=") + (sockets.loaded ? "True" : "False"),
                                "WinsockMaxDatagramSize=" + std::to_string(sockets.maxDatagramSize),
                                "WinsockMaxSockets=" + std::to_string(sockets.maxSockets),
                                "WinsockPath=" + sockets.path, "WinsockStatus=" + sockets.status}),
                         ui::Buttons::Ok, ui::Icon::None, "WinSock info");
}

} // namespace connection
