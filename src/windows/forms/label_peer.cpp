#include "windows/forms/label_peer.h"

#include "windows/forms/device_context.h"
#include "windows/forms/window_text.h"

#include <algorithm>

namespace windows {

// Measured as the window draws it: with the template's SS_EDITCONTROL, a word longer than the line, such as a web
// address, wraps too.
int LabelPeer::missingHeight() const {
    if (!m_label.growsForm) {
        return 0;
    }
    RECT area{};
    GetClientRect(window(), &area);
    RECT text{0, 0, area.right, 0};
    const WindowDeviceContext device(window());
    DrawTextW(device.handle(), windowText(window()).c_str(), -1, &text,
              DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_EXPANDTABS | DT_NOPREFIX);
    return static_cast<int>(std::max(text.bottom - area.bottom, 0L));
}

} // namespace windows
