// The message form as its user and its caller see it.
#include "login/frmMsgBox.h"

#include "fakes/fake_desktop.h"

#include <gtest/gtest.h>

namespace login {
namespace {

TEST(frmMsgBox, TellsWhichButtonWasPressedAfterItIsGone) {
    fakes::FakeDesktop desktop;
    frmMsgBox form(desktop);
    const struct {
        const char* way;
        std::function<void()> leave;
        int pressed;
    } kRows[] = {{"first", [&] { form.cmdButton1.userClick(); }, 1},
                 {"second", [&] { form.cmdButton2.userClick(); }, 2},
                 {"third", [&] { form.cmdButton3.userClick(); }, 3},
                 {"Escape", [&] { form.userKey(ui::key::kEscape); }, 0},
                 {"X", [&] { form.userClose(); }, 0}};
    for (const auto& row : kRows) {
        form.load();
        form.lblMessage.setText("Error while connecting");
        form.cmdButton1.setText("Cancel");
        form.cmdButton2.setText("Dial Settings");
        form.cmdButton3.setText("User Settings");
        desktop.whenShown("frmMsgBox", row.leave);
        form.showModal();
        EXPECT_FALSE(form.loaded());
        EXPECT_EQ(form.Button1Pressed, row.pressed == 1) << row.way;
        EXPECT_EQ(form.Button2Pressed, row.pressed == 2) << row.way;
        EXPECT_EQ(form.Button3Pressed, row.pressed == 3) << row.way;
    }
}

TEST(frmMsgBox, OnlyButtonsWithACaptionAreShownAndCaptionsDoNotOutliveTheShowing) {
    fakes::FakeDesktop desktop;
    frmMsgBox form(desktop);
    form.load();
    form.cmdButton1.setText("Cancel");
    form.cmdButton3.setText("User Settings");
    desktop.whenShown("frmMsgBox", [&] {
        EXPECT_TRUE(form.cmdButton1.visible());
        EXPECT_FALSE(form.cmdButton2.visible());
        EXPECT_TRUE(form.cmdButton3.visible());
        form.cmdButton1.userClick();
    });
    form.showModal();
    form.load();
    form.cmdButton1.setText("Cancel");
    desktop.whenShown("frmMsgBox", [&] {
        EXPECT_FALSE(form.cmdButton3.visible());
        form.cmdButton1.userClick();
    });
    form.showModal();
}

} // namespace
} // namespace login
