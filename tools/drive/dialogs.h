// Answering message boxes, input boxes and file dialogs that are on screen.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>

namespace drive {

// The text of a message box, line breaks as they are.
[[nodiscard]] std::string boxText(HWND box);
[[nodiscard]] bool boxHasIcon(HWND box);
// OK, Cancel, Yes or No. Throws Failure when the box has no such button.
void answerBox(HWND box, std::string_view answer);

[[nodiscard]] std::string inputPrompt(HWND box);
void answerInput(HWND box, std::string_view text);

// The name field of a file dialog; null while the dialog is still building itself.
[[nodiscard]] HWND fileNameField(HWND dialog);

// Clicks the dialog's own OK (or Open), or Cancel.
void accept(HWND dialog);
void cancel(HWND dialog);

} // namespace drive
