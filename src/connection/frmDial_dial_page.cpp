// The dial-up page of the connection settings.
#include "base/resume_next.h"
#include "base/text.h"
#include "connection/frmDial.h"
#include "ui/desktop.h"
#include "ui/report_errors.h"

namespace connection {
namespace {

// The choices as they are stored, in the order of the option buttons.
constexpr std::array<std::string_view, 3> kDialTypes{"DialUp", "Manual", "Proxy"};
constexpr std::size_t kDialUp = 0;
constexpr std::size_t kManual = 1;
constexpr std::size_t kProxy = 2;

constexpr ui::Color kDiallingColor = 0x00800000; // dark blue

std::string withCode(std::int32_t code, std::string_view description) {
    return std::to_string(code) + ": " + std::string(description);
}

} // namespace

// Only who asked for neither of the other ways is told that this machine cannot dial.
void frmDial::loadDialType() {
    const std::string type = setting("DialType");
    const std::size_t choice = type == kDialTypes[kManual] ? kManual : type == kDialTypes[kDialUp] ? kDialUp : kProxy;
    Option1[choice].choose();
    fillPhoneBook();
    if (lPhonebook.items().empty() && type != kDialTypes[kProxy] && type != kDialTypes[kManual]) {
        desktop().messageBox("QuorVantis will not be able to connect to the internet for you as \r\n"
                             "you do not have any standard windows dial up connections.",
                             ui::Buttons::Ok, ui::Icon::Critical);
        Option1[kManual].choose();
        base::resumeNext([&] { store("DialType", kDialTypes[kManual]); });
    }
}

void frmDial::fillPhoneBook() {
    const std::string remembered = setting("PhoneBook");
    lPhonebook.clear();
    for (const std::string& entry : m_services.dialer.phoneBook()) {
        lPhonebook.add(entry);
        if (entry == remembered) {
            lPhonebook.setSelected(lPhonebook.items().size() - 1);
        }
    }
}

void frmDial::Option1_Click(std::size_t index) {
    if (index == kDialUp) {
        fillPhoneBook();
    }
    ui::reportErrors(desktop(), "Option1_Click", [&] { store("DialType", kDialTypes[index]); });
}

void frmDial::bPhoneBookConnect_Click() {
    if (!Option1[kDialUp].chosen() || !lPhonebook.selected()) {
        desktop().messageBox("Please choose a dial in connection");
        return;
    }
    const std::string entry = lPhonebook.selectedText();
    ui::reportErrors(desktop(), "bPhoneBookConnect_Click", [&] { store("PhoneBook", entry); });
    bPhoneBookConnect.setEnabled(false);
    bCancel1.setEnabled(true);
    lblStatus.setForeColor(kDiallingColor);
    m_dialling = true;
    m_services.dialer.dial(entry, *this);
}

void frmDial::progress(std::int32_t number, std::string_view text1, std::string_view text2, std::string_view text3,
                       std::string_view text4) noexcept {
    if (number != 0) {
        lblStatus.setText(std::to_string(number) + "  " + std::string(text1) + " " + std::string(text2) + " " +
                          std::string(text3) + std::string(text4)); // no blank before the last: it continues the third
    }
}

void frmDial::status(std::int32_t code, std::string_view description) noexcept {
    lblStatus.setText(withCode(code, description));
}

void frmDial::error(std::int32_t code, std::string_view description) noexcept {
    dialled();
    const bool denied = base::upperCase(description).find("DENIED") != std::string::npos;
    lblStatus.setText(Option1[kDialUp].chosen() && denied
                          ? "Could not logon using your phone book (" + std::to_string(code) + ")"
                          : withCode(code, description));
}

void frmDial::connected() noexcept {
    dialled();
    if (DialMode) {
        leave(false);
    }
}

// The line is not dialled any more, for better or worse.
void frmDial::dialled() {
    m_dialling = false;
    bPhoneBookConnect.setEnabled(true);
    lblStatus.setForeColor({});
}

} // namespace connection
