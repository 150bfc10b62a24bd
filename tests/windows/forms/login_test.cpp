// The login form and the message form on the real desktop, worked by keys alone.
#include "fakes/fake_clock.h"
#include "fakes/fake_data_protection.h"
#include "fakes/fake_late_bound.h"
#include "fakes/fake_settings.h"
#include "login/frmLogin.h"
#include "login/frmMsgBox.h"
#include "windows/forms/person.h"
#include "windows/forms/window_text.h"
#include "windows/forms/windows_desktop.h"

#include <gtest/gtest.h>

#include <vector>

namespace test {
namespace {

constexpr std::string_view kLogin = "frmLogin";
constexpr std::string_view kMessage = "frmMsgBox";

class LoginTest : public testing::Test {
protected:
    // Goes once round with Tab, from where the focus is.
    void tabThrough(std::string_view formName, std::size_t stops) {
        for (std::size_t i = 0; i < stops; ++i) {
            person.press(VK_TAB).then(
                [this, formName] { visited.push_back(windows::controlName(formName, GetDlgCtrlID(GetFocus()))); });
        }
    }
    void pressMnemonic(wchar_t letter) {
        person.then([letter] { PostMessageW(GetFocus(), WM_SYSCHAR, letter, 1 << 29); });
    }

    using Names = std::vector<std::string_view>;
    Names visited;
    fakes::FakeSettings settings;
    fakes::FakeDataProtection protection;
    fakes::FakeClock clock;
    windows::WindowsDesktop desktop{GetModuleHandleW(nullptr)};
    login::frmLogin form{{desktop, settings, protection, clock}};
    login::frmMsgBox box{desktop};
    Person person;
};

TEST_F(LoginTest, APasswordIsTypedUnseenAndEnterConfirmsItFromAnyField) {
    form.UserName = "4711";
    person.type(L"s\x00E9\"/>").then([] {
        EXPECT_EQ(windows::windowText(control(kLogin, "txtUserName")), L"4711");
        for (const std::string_view name : {"txtPassword", "tnewpassword", "tverifypassword"}) {
            EXPECT_NE(SendMessageW(control(kLogin, name), EM_GETPASSWORDCHAR, 0, 0), 0) << name;
        }
    });
    tabThrough(kLogin, 4);
    person.press(VK_ESCAPE).press(VK_RETURN);
    form.showModal();
    EXPECT_EQ(visited, (Names{"chChangePassword", "cmdOK", "cmdCancel", "txtPassword"}));
    EXPECT_TRUE(form.OKPressed);
    EXPECT_EQ(form.Password, "S\xC3\x89\"/>");
}

TEST_F(LoginTest, ANewPasswordIsSetByKeysAlone) {
    const auto brushOf = [](UINT message) {
        const HWND field = control(kLogin, "tnewpassword");
        const HDC device = GetDC(field);
        const LRESULT brush = SendMessageW(formWindow(kLogin), message, reinterpret_cast<WPARAM>(device),
                                           reinterpret_cast<LPARAM>(field));
        ReleaseDC(field, device);
        return reinterpret_cast<HBRUSH>(brush);
    };
    person.then([&] { EXPECT_EQ(brushOf(WM_CTLCOLORSTATIC), GetSysColorBrush(COLOR_BTNFACE)); });
    pressMnemonic(L'c');
    person.then([&] { EXPECT_EQ(brushOf(WM_CTLCOLOREDIT), GetSysColorBrush(COLOR_WINDOW)); });
    pressMnemonic(L'p');
    tabThrough(kLogin, 6);
    pressMnemonic(L'n');
    person.type(L"New1");
    pressMnemonic(L'v');
    person.type(L"new1")
        .press(VK_RETURN)
        .waitFor("the refusal", [] { return systemDialog() != nullptr; })
        .press(VK_RETURN)
        .waitFor("its end", [] { return systemDialog() == nullptr; })
        .then([] { EXPECT_EQ(GetFocus(), control(kLogin, "tnewpassword")); })
        .type(L"new1") // over the old one, which is selected
        .press(VK_RETURN);
    form.showModal();
    EXPECT_EQ(visited,
              (Names{"chChangePassword", "tnewpassword", "tverifypassword", "cmdOK", "cmdCancel", "txtPassword"}));
    EXPECT_EQ(form.NewPassword, "NEW1");
}

TEST_F(LoginTest, CharacterNoughtCancels) {
    form.OKPressed = true;
    person.then([] { PostMessageW(GetFocus(), WM_CHAR, 0, 1); });
    form.showModal();
    EXPECT_FALSE(form.OKPressed);
}

TEST_F(LoginTest, ABackColourThatIsNoSystemColourIsPaintedUntilTheNext) {
    const auto backgroundOf = [] {
        const HWND field = control(kLogin, "txtPassword");
        const HDC device = GetDC(field);
        SendMessageW(formWindow(kLogin), WM_CTLCOLOREDIT, reinterpret_cast<WPARAM>(device),
                     reinterpret_cast<LPARAM>(field));
        const COLORREF color = GetBkColor(device);
        ReleaseDC(field, device);
        return color;
    };
    form.txtPassword.setBackColor(0x80C0FF);
    person
        .then([&] {
            EXPECT_EQ(backgroundOf(), 0x80C0FFU);
            form.txtPassword.setBackColor(0xC0FFC0);
        })
        .then([&] { EXPECT_EQ(backgroundOf(), 0xC0FFC0U); })
        .press(VK_RETURN);
    form.showModal();
}

TEST_F(LoginTest, TheMessageFormIsWorkedByKeys) {
    const auto show = [&] {
        box.load();
        box.lblMessage.setText("Could not connect.");
        box.cmdButton1.setText("Cancel");
        box.cmdButton2.setText("Dial Settings");
        box.showModal();
    };
    tabThrough(kMessage, 2);
    person.then([] { EXPECT_FALSE(IsWindowVisible(control(kMessage, "cmdButton3"))); }).press(VK_RETURN);
    show();
    EXPECT_EQ(visited, (Names{"cmdButton2", "cmdButton1"}));
    EXPECT_TRUE(box.Button1Pressed);

    person.press(VK_TAB).press(VK_RETURN);
    show();
    EXPECT_TRUE(box.Button2Pressed);

    person.press(VK_ESCAPE);
    show();
    EXPECT_FALSE(box.Button1Pressed || box.Button2Pressed || box.Button3Pressed);
}

} // namespace
} // namespace test
