// The standard dialogs, known by the ids that the platform gives their controls.
#include "drive/dialogs.h"

#include "drive/controls.h"
#include "drive/failure.h"
#include "drive/screen.h"
#include "drive/wide.h"
#include "windows/forms/control_ids.h"

#include <algorithm>
#include <array>

namespace drive {
namespace {

constexpr int kMessageBoxText = 0xFFFF;
constexpr int kFileNameEdit = 0x480; // edt1 of the platform's dlgs.h

struct Answer {
    std::string_view name;
    int id;
};
constexpr auto kAnswers = std::to_array<Answer>({{"OK", IDOK}, {"Cancel", IDCANCEL}, {"Yes", IDYES}, {"No", IDNO}});

void clickById(HWND dialog, int id) {
    const HWND button = GetDlgItem(dialog, id);
    if (button == nullptr) {
        throw Failure("the dialog '" + textOf(dialog) + "' has no button with id " + std::to_string(id));
    }
    click(button);
}

HWND inputControl(HWND box, std::string_view name) {
    return GetDlgItem(box, windows::controlId("InputBox", name));
}

} // namespace

std::string boxText(HWND box) {
    return textOf(GetDlgItem(box, kMessageBoxText));
}

bool boxHasIcon(HWND box) {
    return std::ranges::any_of(descendantsOf(box), [](HWND control) {
        return classOf(control) == "Static" && (GetWindowLongW(control, GWL_STYLE) & SS_TYPEMASK) == SS_ICON &&
               IsWindowVisible(control) != FALSE && ask(control, STM_GETICON) != 0;
    });
}

void answerBox(HWND box, std::string_view answer) {
    const auto* const found = std::ranges::find(kAnswers, answer, &Answer::name);
    if (found == kAnswers.end()) {
        throw Failure("'" + std::string(answer) + "' is no answer; OK, Cancel, Yes and No are");
    }
    clickById(box, found->id);
}

std::string inputPrompt(HWND box) {
    return textOf(inputControl(box, "lblPrompt"));
}

void answerInput(HWND box, std::string_view text) {
    const std::wstring value = wide(text);
    ask(inputControl(box, "txtInput"), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(value.c_str()));
    accept(box);
}

HWND fileNameField(HWND dialog) {
    for (const HWND control : descendantsOf(dialog)) {
        // In the only combo box that one can type in, or by itself in dialogs that remember no names.
        const bool isName = classOf(GetParent(control)) == "ComboBox" || GetDlgCtrlID(control) == kFileNameEdit;
        if (isName && classOf(control) == "Edit" && usable(control)) {
            return control;
        }
    }
    return nullptr;
}

void accept(HWND dialog) {
    clickById(dialog, IDOK);
}

void cancel(HWND dialog) {
    clickById(dialog, IDCANCEL);
}

} // namespace drive
