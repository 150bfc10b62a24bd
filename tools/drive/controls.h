// One control of a shown form: what it shows, whether a person could use it, and using it.
#pragma once

#include <windows.h>

#include <string>
#include <string_view>
#include <vector>

namespace drive {

// Null when the form has no such control; throws Failure when the program knows none of this name at all.
[[nodiscard]] HWND findControl(HWND form, std::string_view formName, std::string_view controlName);

// Shown, enabled, and not beneath a modal window.
[[nodiscard]] bool usable(HWND control);

// The lines of a list, the rows of a list view (list_view.h), "on" or "off" of a check box, otherwise the text.
[[nodiscard]] std::vector<std::string> valuesOf(HWND control);

// Posted, never sent: the click may open a modal window, and a sender would then wait until it closes.
void click(HWND button);
// True when the line was there and is selected now, and the form was told so.
[[nodiscard]] bool selectLine(HWND list, std::string_view text);
void replaceText(HWND edit, std::string_view text);
void moveFocus(HWND control);
// The control with the focus in the window's thread; null when there is none.
[[nodiscard]] HWND focusOf(HWND window);

} // namespace drive
