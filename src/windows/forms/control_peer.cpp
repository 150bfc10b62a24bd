#include "windows/forms/control_peer.h"

#include "windows/base/wide.h"
#include "windows/forms/paint_color.h"
#include "windows/forms/window_text.h"

namespace windows {

void ControlPeer::update(Aspects aspects) {
    if (aspects.has(ui::Aspect::Text)) {
        updateText();
    }
    if (aspects.has(ui::Aspect::Colors)) {
        m_background.reset();
        InvalidateRect(m_window, nullptr, TRUE);
    }
}

HBRUSH ControlPeer::prepareColors(HDC device) {
    if (!m_control.backColor() && !m_control.foreColor()) {
        return nullptr;
    }
    const ui::Color background = m_control.backColor().value_or(ui::color::kButtonFace);
    SetTextColor(device, toColorRef(m_control.foreColor().value_or(ui::color::kWindowText)));
    SetBkColor(device, toColorRef(background));
    if (isSystemColor(background)) {
        return GetSysColorBrush(systemColorIndex(background));
    }
    if (!m_background) {
        m_background.reset(CreateSolidBrush(toColorRef(background)));
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
