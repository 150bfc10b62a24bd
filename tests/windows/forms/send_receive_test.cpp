// The send/receive window on the real desktop: a user control on a form, its list of commands, its keys.
#include "base/runtime_error.h"
#include "fakes/send_receive_services.h"
#include "sendreceive_form/frmQVI_sendreceive.h"
#include "windows/forms/person.h"
#include "windows/forms/windows_desktop.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include <commctrl.h>

namespace test {
namespace {

constexpr std::string_view kControl = "ucSendReceive";

HWND list() {
    return control(kControl, "lvCommands");
}

std::wstring cellText(int row, int column) {
    std::array<wchar_t, 200> text{};
    LVITEMW item{};
    item.iSubItem = column;
    item.pszText = text.data();
    item.cchTextMax = static_cast<int>(text.size());
    SendMessageW(list(), LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return text.data();
}

bool isTicked(int row) {
    return ListView_GetCheckState(list(), row) == 1;
}

class SendReceiveTest : public testing::Test {
protected:
    SendReceiveTest() {
        services.files.addFolder("C:\\QV");
        services.files.addFile("C:\\QV\\images.xml", "<images/>");
        services.files.addFile("C:\\QV\\productgroups.xml", "<productgroups/>");
        services.settings.set("QuorVantis", "Main", "ImageModify", "Saved");
        form.load();
        auto& commands = *form.engine().domCommands();
        commands.selectSingleNode("//command[@name='sendimagelinks210']").setAttribute("required", "yes");
        form.engine().LoadCommands();
    }

    fakes::SendReceiveServicesOn<windows::WindowsDesktop> services{GetModuleHandleW(nullptr)};
    sendreceive::frmQVI_sendreceive form{services.all, {"1001", "C:\\QV\\", "Shop", "http://supplier/"}};
    Person person;
};

TEST_F(SendReceiveTest, TheListShowsItsRowsAndIsTickedByTheSpaceBar) {
    person
        .then([] {
            EXPECT_EQ(ListView_GetItemCount(list()), 3);
            EXPECT_EQ(cellText(1, 0), L"SendImageLinksAll210");
            EXPECT_EQ(cellText(1, 1), L"Overwrite image links on server");
            EXPECT_EQ(cellText(1, 3), L" ");
            EXPECT_EQ(GetFocus(), list());
            EXPECT_TRUE(isTicked(0));
            EXPECT_FALSE(isTicked(1));
        })
        .press(VK_DOWN)
        .press(VK_SPACE)
        .then([&] {
            EXPECT_TRUE(isTicked(1));
            EXPECT_TRUE(form.engine().lvCommands.checked(1));
        })
        .press(VK_UP)
        .press(VK_SPACE)
        .waitFor("the message", [] { return systemDialog() != nullptr; })
        .then([] { PostMessageW(systemDialog(), WM_COMMAND, IDOK, 0); })
        .waitFor("the box to close", [] { return systemDialog() == nullptr; })
        .then([&] {
            EXPECT_TRUE(isTicked(0)) << "required";
            EXPECT_TRUE(form.engine().lvCommands.checked(0));
            form.engine().lvCommands.setCell(1, 3, "Busy");
            form.engine().lvCommands.setChecked(2, true);
        })
        .then([] {
            EXPECT_EQ(cellText(1, 3), L"Busy");
            EXPECT_TRUE(isTicked(2));
        })
        .press(VK_ESCAPE);
    form.showModal();
    EXPECT_FALSE(form.loaded());
}

TEST_F(SendReceiveTest, ReturnPressesTheButtonThatHasTheFocusOrElseOk) {
    form.engine().session.bLoginNotRequired = true;
    const auto answersBox = [&] {
        services.network.willAnswer("<results error='No'/>");
        person.waitFor("the message", [] { return systemDialog() != nullptr; })
            .then([] {
                EXPECT_FALSE(IsWindowEnabled(control(kControl, "cmdOK")));
                PostMessageW(systemDialog(), WM_COMMAND, IDOK, 0);
            })
            .waitFor("the box to close", [] { return systemDialog() == nullptr; })
            .then([] { EXPECT_EQ(GetFocus(), list()); });
    };
    person.press(VK_RETURN);
    answersBox();
    person.press(VK_TAB).then([] { EXPECT_EQ(GetFocus(), control(kControl, "cmdOK")); }).press(VK_RETURN);
    answersBox();
    person.press(VK_TAB)
        .press(VK_TAB)
        .then([] { EXPECT_EQ(GetFocus(), control(kControl, "cmdCancel")); })
        .press(VK_RETURN);
    form.showModal();
    EXPECT_FALSE(form.loaded());
}

TEST_F(SendReceiveTest, AnErrorInAHandlerOfTheControlComesOutOfTheModalCall) {
    form.engine().cmdCancel.onClick = [] { throw base::RuntimeError(base::error::kDiskFull); };
    person.click(kControl, "cmdCancel");
    EXPECT_THROW(form.showModal(), base::RuntimeError);
}

} // namespace
} // namespace test
