// The connection settings: how this machine reaches the supplier, a dial-up connection, and a page to try it all.
#pragma once

#include "connection/http_settings.h"
#include "connection/https_control.h"
#include "connection/transfer_text.h"
#include "ports/file_system.h"
#include "ports/network.h"
#include "ports/settings.h"
#include "ui/controls.h"
#include "ui/form.h"
#include "ui/tab_strip.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace connection {

// What the form works with. None is owned; all outlive the form.
struct DialServices {
    ui::Desktop& desktop;
    ports::FileSystem& fileSystem;
    ports::Settings& settings;
    ports::Network& network;
    ports::Dialer& dialer; // the caller's: a connection lives on when the form is gone
    Log log;               // of how the connection test is set up
};

// On whose behalf it is shown.
struct DialHost {
    std::string gSettingString; // whose settings; empty: nothing is stored
    std::string gWebService;
    std::string testAddress;     // what the connection test fetches, unless the user names another
    std::string componentFolder; // without a final backslash
};

// A form that is closed while its connection test runs ends the test and returns from showModal(); it must not be
// destroyed by what the test's message handling runs.
class frmDial : public ui::Form, private ports::DialEvents {
public:
    frmDial(const DialServices& services, DialHost host);
    ~frmDial() override;

    // Set before it is shown: the dial-up page is in front, and the form closes by itself once the connection stands.
    // Else the settings are in front.
    bool DialMode = false;
    // Read after it was shown: the user left in another way than by OK, or by connecting in dial mode.
    bool Cancelled = true;

    // Stores everything that is not stored at once. Raises 75 where the store cannot be written.
    void UseSave();
    // Enables the fields that the kind of firewall needs.
    void SetProxyFields();
    // Fetches the address with the settings as they stand in the form, which stores them.
    void TestUrl();
    // Brings the test's control in line with the stored settings; shows its errors in a box.
    void SetHTTPSettings();

    ui::TabStrip tabPages{*this, "tabPages"};

    std::array<ui::OptionButton, 3> Option1{{{*this, "Option1_0"}, {*this, "Option1_1"}, {*this, "Option1_2"}}};
    ui::Label lblPhonebook{*this, "lblPhonebook"};
    ui::ListBox lPhonebook{*this, "lPhonebook"};
    ui::Button bPhoneBookConnect{*this, "bPhoneBookConnect"};
    ui::Button bCancel1{*this, "bCancel1"};
    ui::Label lblStatus{*this, "lblStatus"};

    ui::CheckBox chkProxy{*this, "chkProxy"};
    ui::Label lblType{*this, "lblType"};
    ui::ComboBox comType{*this, "comType"};
    ui::Label lblServer{*this, "lblServer"};
    ui::TextBox txtServer{*this, "txtServer"};
    ui::Label lblPort{*this, "lblPort"};
    ui::TextBox txtPort{*this, "txtPort"};
    ui::Label lblUserID{*this, "lblUserID"};
    ui::TextBox txtUserID{*this, "txtUserID"};
    ui::Label lblUser{*this, "lblUser"}; // whether the field is optional; lblPassword likewise
    ui::Label lblPasswordBox{*this, "lblPasswordBox"};
    ui::TextBox txtPassword{*this, "txtPassword"};
    ui::Label lblPassword{*this, "lblPassword"};
    ui::CheckBox chkUseWinInet{*this, "chkUseWinInet"};

    ui::Label lblURL{*this, "lblURL"};
    ui::TextBox txtURL{*this, "txtURL"};
    ui::Button cmdGet{*this, "cmdGet"};
    ui::CheckBox chkEvents{*this, "chkEvents"};
    ui::Button cmdWinsock{*this, "cmdWinsock"};
    ui::TextBox txtTransfer{*this, "txtTransfer"};

    HttpsControl HTTPS1; // of the test

    ui::Label lblNotStored{*this, "lblNotStored"};
    ui::Button cmdOK{*this, "cmdOK"};
    ui::Button bCancel2{*this, "bCancel2"};

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyPress(char16_t& key) override; // Escape cancels; Return in the address fetches it
    void Form_CloseBox() override { leave(true); }

private:
    enum Page : std::uint8_t { kDialPage, kProxyPage, kTestPage };

    // frmDial.cpp: the settings.
    void setTexts();
    void makePages();
    void connectHandlers();
    void loadIcon();
    void loadProxyFields();
    void selectType(std::size_t index);
    void comType_Click();
    void chkUseWinInet_Click();
    void cmdOK_Click();
    void leave(bool cancelled);
    [[nodiscard]] std::string setting(std::string_view key) const;
    void store(std::string_view key, std::string_view value);

    // frmDial_dial_page.cpp: the choice of the way, the phone book, dialling.
    void loadDialType();
    void fillPhoneBook();
    void Option1_Click(std::size_t index);
    void bPhoneBookConnect_Click();
    void progress(std::int32_t number, std::string_view text1, std::string_view text2, std::string_view text3,
                  std::string_view text4) noexcept override;
    void status(std::int32_t code, std::string_view description) noexcept override;
    void error(std::int32_t code, std::string_view description) noexcept override;
    void connected() noexcept override;
    void dialled();

    // frmDial_test_page.cpp: the connection test.
    void cmdGet_Click();
    void cmdWinsock_Click();
    void HTTPS1_Disconnected(std::int32_t statusCode, const std::string& description);
    void HTTPS1_Error(std::int32_t errorCode, const std::string& description);
    [[nodiscard]] bool tellsEvents() const;

    DialServices m_services;
    DialHost m_host;
    TransferText m_transfer;
    bool m_filling = false; // assigning a control is no choice of the user's then
    bool m_dialling = false;
};

} // namespace connection
