#include "login/frmMsgBox.h"

#include "ui/desktop.h"

namespace login {

frmMsgBox::frmMsgBox(ui::Desktop& desktop) : Form(desktop, "frmMsgBox") {
    setCaption(ui::kDefaultTitle);
    cmdButton1.onClick = [this] { press(Button1Pressed); };
    cmdButton2.onClick = [this] { press(Button2Pressed); };
    cmdButton3.onClick = [this] { press(Button3Pressed); };

    lblMessage.growsForm = true;
    lblMessage.anchors.right = true;
    lblMessage.anchors.bottom = true;
    for (ui::Button* const button : {&cmdButton1, &cmdButton2, &cmdButton3}) {
        button->anchors = {.left = false, .top = false, .right = true, .bottom = true};
    }
}

void frmMsgBox::Form_Load() {
    Button1Pressed = Button2Pressed = Button3Pressed = false;
    lblMessage.setText("");
    for (ui::Button* const button : {&cmdButton1, &cmdButton2, &cmdButton3}) {
        button->setText("");
    }
}

void frmMsgBox::Form_Activate() {
    for (ui::Button* const button : {&cmdButton1, &cmdButton2, &cmdButton3}) {
        button->setVisible(!button->text().empty());
    }
    setFocus(cmdButton1);
}

void frmMsgBox::Form_KeyPress(char16_t& key) {
    if (key == ui::key::kEscape) {
        key = 0;
        unload();
    }
}

void frmMsgBox::press(bool& pressed) {
    pressed = true;
    unload();
}

} // namespace login
