// A message with up to three buttons whose captions the caller chooses, where the platform's message box has no fitting
// ones.
#pragma once

#include "ui/controls.h"
#include "ui/form.h"

namespace login {

// The caller loads it, sets the texts, shows it and reads which button was pressed; none is when the window was closed
// otherwise. A button without a caption is not shown.
class frmMsgBox : public ui::Form {
public:
    explicit frmMsgBox(ui::Desktop& desktop);

    bool Button1Pressed = false;
    bool Button2Pressed = false;
    bool Button3Pressed = false;

    ui::Label lblMessage{*this, "lblMessage"};
    ui::Button cmdButton1{*this, "cmdButton1"};
    ui::Button cmdButton2{*this, "cmdButton2"};
    ui::Button cmdButton3{*this, "cmdButton3"};

protected:
    void Form_Load() override;
    void Form_Activate() override;
    void Form_KeyPress(char16_t& key) override; // Escape closes

private:
    void press(bool& pressed);
};

} // namespace login
