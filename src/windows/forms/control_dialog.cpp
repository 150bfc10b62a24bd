#include "windows/forms/control_dialog.h"

#include "base/runtime_error.h"
#include "windows/forms/common_controls.h"
#include "windows/forms/control_ids.h"

#include <string>

namespace windows {

HWND makeControlDialog(HINSTANCE module, const ui::UserControl& control, HWND parent, DLGPROC proc, LPARAM parameter) {
    const CommonControlsScope styles(module);
    const HWND dialog = CreateDialogParamW(module, MAKEINTRESOURCEW(formId(control.name())), parent, proc, parameter);
    if (dialog == nullptr) {
        throw base::RuntimeError(base::error::kInternalError, "No window for the control " +
                                                                  std::string(control.name()) + ": Windows error " +
                                                                  std::to_string(GetLastError()));
    }
    return dialog;
}

} // namespace windows
