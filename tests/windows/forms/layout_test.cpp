// Every dialog template with its form's real texts: bound, nothing clipped, nothing overlapping, at any resolution.
#include "connection/frmDial.h"
#include "fakes/fake_network.h"
#include "fakes/send_receive_services.h"
#include "images/frmBrowseGeneral.h"
#include "login/frmLogin.h"
#include "login/frmMsgBox.h"
#include "sendreceive_form/frmQVI_sendreceive.h"
#include "windows/forms/device_context.h"
#include "windows/forms/dpi.h"
#include "windows/forms/image_manager.h"
#include "windows/forms/input_box.h"
#include "windows/forms/window_text.h"

#include <bit>
#include <cstdlib>

#include <commctrl.h>

namespace test {
namespace {

using LayoutTest = ImageManagerTest;
using windows::windowText;

struct Placed {
    const ui::Control* control;
    std::string name;
    HWND window;
    RECT rect;  // in the form's client area
    bool frame; // other controls are inside
};

void addControls(const ui::Container& container, std::string_view name, HWND form, std::vector<Placed>& placed) {
    for (const ui::Control* const control : container.controls()) {
        const HWND window = test::control(name, control->name());
        RECT rect{};
        GetWindowRect(window, &rect);
        MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&rect), 2);
        const auto* const site = dynamic_cast<const ui::UserControlSite*>(control);
        const bool frame = site != nullptr || dynamic_cast<const ui::Frame*>(control) != nullptr;
        placed.push_back({control, std::string(control->name()), window, rect, frame});
        if (site != nullptr) {
            addControls(site->content(), site->content().name(), form, placed);
        }
    }
}

std::vector<Placed> controlsOf(const ui::Form& form) {
    std::vector<Placed> placed;
    addControls(form, form.name(), formWindow(form.name()), placed);
    return placed;
}

bool inside(const RECT& inner, const RECT& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

SIZE textSize(const Placed& control, UINT format) {
    const windows::WindowDeviceContext device(control.window);
    RECT area{0, 0, control.rect.right - control.rect.left, 0};
    DrawTextW(device.handle(), windowText(control.window).c_str(), -1, &area, format | DT_CALCRECT);
    return {area.right, area.bottom};
}

// The room in pixels at 96 dpi that a control of this kind needs beside its text.
SIZE ornaments(const ui::Control& control) {
    if (dynamic_cast<const ui::Button*>(&control) != nullptr) {
        return {12, 6};
    }
    if (dynamic_cast<const ui::CheckBox*>(&control) != nullptr ||
        dynamic_cast<const ui::OptionButton*>(&control) != nullptr) {
        return {18, 0};
    }
    if (dynamic_cast<const ui::Frame*>(&control) != nullptr) {
        return {18, 0};
    }
    return {0, 0};
}

void expectTabsFit(const Placed& strip, UINT dpi) {
    const LRESULT count = SendMessageW(strip.window, TCM_GETITEMCOUNT, 0, 0);
    RECT last{};
    SendMessageW(strip.window, TCM_GETITEMRECT, static_cast<WPARAM>(count - 1), reinterpret_cast<LPARAM>(&last));
    EXPECT_LE(last.right, strip.rect.right - strip.rect.left) << "the tabs are too wide at " << dpi;
    EXPECT_LE(last.bottom, strip.rect.bottom - strip.rect.top) << "the tabs are too high at " << dpi;
}

void expectTextsFit(const ui::Form& form, UINT dpi) {
    for (const Placed& placed : controlsOf(form)) {
        const ui::Control& control = *placed.control;
        if (dynamic_cast<const ui::TabStrip*>(&control) != nullptr) {
            expectTabsFit(placed, dpi);
        }
        if (dynamic_cast<const ui::ListBox*>(&control) != nullptr ||
            dynamic_cast<const ui::ComboBox*>(&control) != nullptr ||
            dynamic_cast<const ui::ListView*>(&control) != nullptr) {
            continue; // scroll
        }
        const bool label = dynamic_cast<const ui::Label*>(&control) != nullptr;
        const bool wraps = label || dynamic_cast<const ui::PictureBox*>(&control) != nullptr;
        const bool wrapsWords = wraps && (GetWindowLongW(placed.window, GWL_STYLE) & SS_EDITCONTROL) != 0;
        const SIZE text = textSize(placed, wraps ? DT_WORDBREAK | (wrapsWords ? DT_EDITCONTROL : 0U) : DT_SINGLELINE);
        const SIZE extra = ornaments(control);
        const LONG width = text.cx + windows::scale(extra.cx, dpi, windows::kBaseDpi);
        const LONG height = text.cy + windows::scale(extra.cy, dpi, windows::kBaseDpi);
        EXPECT_LE(width, placed.rect.right - placed.rect.left) << placed.name << " is too narrow at " << dpi;
        EXPECT_LE(height, placed.rect.bottom - placed.rect.top) << placed.name << " is too low at " << dpi;
    }
}

void expectNothingOverlaps(const ui::Form& form, UINT dpi) {
    RECT client{};
    GetClientRect(formWindow(form.name()), &client);
    const std::vector<Placed> controls = controlsOf(form);
    for (std::size_t i = 0; i < controls.size(); ++i) {
        const Placed& a = controls[i];
        EXPECT_TRUE(inside(a.rect, client)) << a.name << " sticks out at " << dpi;
        for (std::size_t j = i + 1; j < controls.size(); ++j) {
            const Placed& b = controls[j];
            const bool contained = a.frame != b.frame && (a.frame ? inside(b.rect, a.rect) : inside(a.rect, b.rect));
            const bool together = a.control->visible() && b.control->visible(); // else they are on other pages
            RECT common{};
            EXPECT_TRUE(!together || contained || !IntersectRect(&common, &a.rect, &b.rect))
                << a.name << " overlaps " << b.name << " at " << dpi;
        }
    }
}

// What the system sends when the window moves to a monitor of another resolution.
void changeResolution(HWND window, UINT from, UINT to) {
    constexpr UINT kDpiChanged = 0x02E0;
    RECT place{};
    GetWindowRect(window, &place);
    place.right = place.left + windows::scale(place.right - place.left, to, from);
    place.bottom = place.top + windows::scale(place.bottom - place.top, to, from);
    SendMessageW(window, kDpiChanged, MAKEWPARAM(to, to), reinterpret_cast<LPARAM>(&place));
}

void expectGoodLayoutEverywhere(const ui::Form& form) {
    const HWND window = formWindow(form.name());
    UINT dpi = windows::dpiOf(window);
    for (const UINT next : {dpi, 96U, 144U, 192U, 120U, dpi}) {
        changeResolution(window, dpi, next);
        dpi = next;
        expectTextsFit(form, dpi);
        expectNothingOverlaps(form, dpi);
    }
    if ((GetWindowLongW(window, GWL_STYLE) & WS_THICKFRAME) == 0) {
        return; // nobody can resize it
    }
    RECT place{};
    GetWindowRect(window, &place);
    SetWindowPos(window, nullptr, 0, 0, place.right - place.left + 301, place.bottom - place.top + 203, SWP_NOMOVE);
    expectTextsFit(form, dpi);
    expectNothingOverlaps(form, dpi);
    SetWindowPos(window, nullptr, 0, 0, 10, 10, SWP_NOMOVE); // refused beyond the design's size
    expectNothingOverlaps(form, dpi);
}

TEST_F(LayoutTest, TheImageManager) {
    form.List1.setVisible(true); // have a place of their own
    form.prgTool.setVisible(true);
    person
        .then([&] {
            RECT place{};
            GetWindowRect(formWindow(kForm), &place);
            const UINT dpi = windows::dpiOf(formWindow(kForm));
            EXPECT_LE(place.right - place.left, windows::scale(1024, dpi, windows::kBaseDpi));
            EXPECT_LE(place.bottom - place.top, windows::scale(768 - 40, dpi, windows::kBaseDpi)) << "and the taskbar";
            expectGoodLayoutEverywhere(form);
        })
        .press(VK_RETURN);
    showUntilClosed();
}

TEST_F(LayoutTest, TheFolderPicker) {
    images::frmBrowseGeneral browse(desktop, files);
    browse.load();
    browse.lblPrompt.setText("Browse for the folder where your images are stored");
    person.then([&] { expectGoodLayoutEverywhere(browse); }).press(VK_ESCAPE);
    browse.showModal();
}

TEST_F(LayoutTest, TheInputBox) {
    windows::InputBox box(desktop, "Enter a description", "Description", "");
    person.then([&] { expectGoodLayoutEverywhere(box); }).press(VK_RETURN);
    box.showModal();
}

TEST_F(LayoutTest, TheLoginForm) {
    fakes::FakeDataProtection protection;
    login::frmLogin login({desktop, settings, protection, clock});
    login.UserName = "4711";
    person.then([&] { expectGoodLayoutEverywhere(login); }).press(VK_RETURN);
    login.showModal();
}

TEST_F(LayoutTest, EveryPageOfTheConnectionSettings) {
    fakes::FakeNetwork network;
    const auto dialer = network.createDialer();
    connection::frmDial dial({desktop, files, settings, network, *dialer, [](std::string_view) {}}, {});
    person.waitFor("the word on the phone book", [] { return systemDialog() != nullptr; }).press(VK_RETURN);
    for (std::size_t page = 0; page < 3; ++page) {
        person
            .then([&, page] {
                dial.tabPages.select(page);
                dial.lblStatus.setText("691: Access was denied because the user name and/or password was invalid on "
                                       "the domain of the server that was dialled.");
            })
            .then([&] { expectGoodLayoutEverywhere(dial); });
    }
    person.press(VK_ESCAPE);
    dial.showModal();
}

TEST_F(LayoutTest, TheSendReceiveWindow) {
    fakes::SendReceiveServicesOn<windows::WindowsDesktop> services(GetModuleHandleW(nullptr));
    sendreceive::frmQVI_sendreceive window(services.all, {"1001", "C:\\QV\\", "Shop", "http://supplier/"});
    window.load();
    window.engine().cAlternate.setVisible(true);
    window.engine().cDownloadFiles.setVisible(true);
    window.engine().lProgress.setText("Collecting product group information, please wait");
    person.then([&] { expectGoodLayoutEverywhere(window); }).press(VK_ESCAPE);
    window.showModal();
}

TEST_F(LayoutTest, TheMessageFormGrowsUntilTheWholeMessageIsSeen) {
    login::frmMsgBox box(desktop);
    const std::string longLine = "Could not connect to your supplier, please dial up to the internet manually, then "
                                 "try send/receive again";
    const std::string unbroken = "[https://supplier.example/" + std::string(300, 'w') + "]";
    LONG height = 0; // of the message before
    for (const std::string& text : {std::string("Short."), longLine + "\r\n\r\n(" + longLine + ")",
                                    longLine + "\r\n" + unbroken + longLine + longLine + longLine + longLine}) {
        box.load();
        box.lblMessage.setText(text);
        box.cmdButton1.setText("Cancel");
        box.cmdButton2.setText("Dial Settings");
        box.cmdButton3.setText("User Settings");
        person
            .then([&] {
                RECT place{};
                GetWindowRect(formWindow("frmMsgBox"), &place);
                EXPECT_GE(place.bottom - place.top, height);
                height = place.bottom - place.top;
                expectGoodLayoutEverywhere(box);
            })
            .press(VK_ESCAPE);
        box.showModal();
    }
}

TEST_F(LayoutTest, RunsAtTheResolutionThatWasAskedFor) {
    const char* const asked = std::getenv("QVI_TEST_DPI");
    if (asked == nullptr) {
        GTEST_SKIP() << "no resolution was asked for";
    }
    const auto wanted = static_cast<UINT>(std::atoi(asked));
    person
        .then([&] {
            EXPECT_EQ(windows::dpiOf(formWindow(kForm)), wanted);
            // The template was laid out with a font of that resolution.
            LOGFONTW font{};
            GetObjectW(reinterpret_cast<HGDIOBJ>(SendMessageW(formWindow(kForm), WM_GETFONT, 0, 0)), sizeof font,
                       &font);
            EXPECT_EQ(font.lfHeight, -windows::scale(9, wanted, 72));
        })
        .press(VK_RETURN);
    showUntilClosed();
}

TEST_F(LayoutTest, AFormAndATemplateThatDoNotMatchAreRefused) {
    class TooLittle final : public ui::Form {
    public:
        explicit TooLittle(ui::Desktop& desktop) : Form(desktop, "InputBox") {}
        ui::Label lblPrompt{*this, "lblPrompt"};
        ui::TextBox txtInput{*this, "txtInput"};
        ui::Button cmdOK{*this, "cmdOK"};
    } tooLittle(desktop);
    class TooMuch final : public ui::Form {
    public:
        explicit TooMuch(ui::Desktop& desktop) : Form(desktop, "InputBox") {}
        ui::Label lblPrompt{*this, "lblPrompt"};
        ui::TextBox txtInput{*this, "txtInput"};
        ui::Button cmdOK{*this, "cmdOK"};
        ui::Button cmdCancel{*this, "cmdCancel"};
        ui::Button cmdHelp{*this, "cmdHelp"};
    } tooMuch(desktop);
    class WrongKind final : public ui::Form {
    public:
        explicit WrongKind(ui::Desktop& desktop) : Form(desktop, "InputBox") {}
        ui::Label lblPrompt{*this, "lblPrompt"};
        ui::ListBox txtInput{*this, "txtInput"};
        ui::Button cmdOK{*this, "cmdOK"};
        ui::Button cmdCancel{*this, "cmdCancel"};
    } wrongKind(desktop);
    ui::Form noTemplate(desktop, "frmMissing");

    struct Row {
        ui::Form& form;
        std::string_view named;
    };
    for (const Row& row : {Row{tooLittle, "cmdCancel"}, Row{tooMuch, "cmdHelp"}, Row{wrongKind, "txtInput"},
                           Row{noTemplate, "frmMissing"}}) {
        try {
            row.form.showModal();
            ADD_FAILURE() << row.named << " was not missed";
        } catch (const base::RuntimeError& e) {
            EXPECT_EQ(e.number(), base::error::kInternalError);
            EXPECT_NE(e.description().find(row.named), std::string::npos) << e.description();
        }
        EXPECT_FALSE(desktop.showsForm());
    }
}

TEST_F(LayoutTest, TheHostsThreadKeepsItsOwnAwareness) {
    using GetContext = void*(WINAPI*)();
    const auto get =
        std::bit_cast<GetContext>(GetProcAddress(GetModuleHandleW(L"user32.dll"), "GetThreadDpiAwarenessContext"));
    if (get == nullptr) {
        GTEST_SKIP() << "the system has none per thread";
    }
    void* const before = get();
    person.press(VK_RETURN);
    showUntilClosed();
    EXPECT_EQ(get(), before);
}

} // namespace
} // namespace test
