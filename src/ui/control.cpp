#include "ui/control.h"

#include "ui/container.h"

namespace ui {

Control::Control(Container& owner, std::string_view name) : m_owner(owner), m_name(name) {
    owner.add(*this);
}

void Control::setEnabled(bool enabled) {
    if (m_enabled != enabled) {
        m_enabled = enabled;
        changed(Aspect::Enabled);
    }
}

void Control::setVisible(bool visible) {
    if (m_visible != visible) {
        m_visible = visible;
        changed(Aspect::Visible);
    }
}

void Control::setBackColor(Color color) {
    if (m_backColor != color) {
        m_backColor = color;
        changed(Aspect::Colors);
    }
}

void Control::setForeColor(std::optional<Color> color) {
    if (m_foreColor != color) {
        m_foreColor = color;
        changed(Aspect::Colors);
    }
}

bool Control::storeText(std::string_view text) {
    if (m_text == text) {
        return false;
    }
    m_text = text;
    changed(Aspect::Text);
    return true;
}

void Control::appendText(std::string_view text) {
    if (!text.empty()) {
        m_text += text;
        changed(Aspect::Text);
    }
}

void Control::changed(Aspect aspect) {
    m_owner.controlChanged(*this, aspect);
}

} // namespace ui
