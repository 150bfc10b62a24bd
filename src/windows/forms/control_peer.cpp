#include "windows/forms/control_peer.h"

#include "windows/adapters/wide.h"
#include "windows/forms/window_text.h"

namespace windows {

void ControlPeer::update(Aspects aspects) {
    if (aspects.has(ui::Aspect::Text)) {
        updateText();
    }
}

void ControlPeer::updateText() {
    const std::wstring text = toWide(m_control.text());
    if (text != windowText(m_window)) {
        SetWindowTextW(m_window, text.c_str());
    }
}

} // namespace windows
