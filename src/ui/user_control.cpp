#include "ui/user_control.h"

#include "ui/controls.h"

namespace ui {

void UserControl::userReturn(Control& focused) {
    auto* button = dynamic_cast<Button*>(&focused);
    if (button == nullptr) {
        button = defaultButton();
    }
    if (button != nullptr) {
        button->userClick();
    }
}

} // namespace ui
