// The box that asks for a line of text.
#pragma once

#include "ui/controls.h"
#include "ui/form.h"

#include <string>
#include <string_view>

namespace windows {

class InputBox final : public ui::Form {
public:
    InputBox(ui::Desktop& desktop, std::string_view prompt, std::string_view title, std::string_view initial);

    ui::Label lblPrompt{*this, "lblPrompt"};
    ui::TextBox txtInput{*this, "txtInput"};
    ui::Button cmdOK{*this, "cmdOK"};
    ui::Button cmdCancel{*this, "cmdCancel"};

    // What was entered; "" when cancelled.
    [[nodiscard]] const std::string& answer() const noexcept { return m_answer; }

protected:
    void Form_KeyPress(char16_t& key) override;

private:
    void accept();

    std::string m_answer;
};

} // namespace windows
