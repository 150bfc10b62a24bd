#include "windows/forms/control_peer.h"

#include "windows/adapters/wide.h"
#include "windows/forms/paint_color.h"
#include "windows/forms/window_text.h"

namespace windows {

void ControlPeer::update(Aspects aspects) {
    if (aspects.has(ui::Aspect::Text)) {
        updateText();
    }
    if (aspects.has(ui::Aspect::Colors) && m_control.backColor()) {
        m_background.reset();
        InvalidateRect(m_window, nullptr, TRUE);
    }
}

HBRUSH ControlPeer::prepareColors(HDC device) {
    const std::optional<ui::Color> color = m_control.backColor();
    if (!color) {
        return nullptr;
    }
    SetTextColor(device, GetSysColor(COLOR_WINDOWTEXT));
    SetBkColor(device, toColorRef(*color));
    if (isSystemColor(*color)) {
        return GetSysColorBrush(systemColorIndex(*color));
    }
    if (!m_background) {
        m_background.reset(CreateSolidBrush(toColorRef(*color)));
    }
    return m_background.get();
}

void ControlPeer::updateText() {
    const std::wstring text = toWide(m_control.text());
    if (text != windowText(m_window)) {
        SetWindowTextW(m_window, text.c_str());
    }
}

} // namespace windows
