#include "windows/forms/input_box.h"

namespace windows {

InputBox::InputBox(ui::Desktop& desktop, std::string_view prompt, std::string_view title, std::string_view initial)
    : Form(desktop, "InputBox") {
    setCaption(title);
    lblPrompt.setText(prompt);
    txtInput.setText(initial);
    cmdOK.setText("OK");
    cmdCancel.setText("Cancel");
    cmdOK.onClick = [this] { accept(); };
    cmdCancel.onClick = [this] { hide(); };
    setFocus(txtInput);
}

void InputBox::Form_KeyPress(char16_t& key) {
    // Return on the Cancel button cancels, as in the platform's own boxes.
    if (key == ui::key::kEscape || (key == ui::key::kReturn && focused() == &cmdCancel)) {
        key = 0;
        hide();
    } else if (key == ui::key::kReturn) {
        key = 0;
        accept();
    }
}

void InputBox::accept() {
    m_answer = txtInput.text();
    hide();
}

} // namespace windows
