#include "ui/tab_strip.h"

#include <utility>

namespace ui {

void TabStrip::addTab(std::string_view title, std::vector<Control*> page) {
    m_tabs.push_back({std::string(title), std::move(page)});
    showPage(m_tabs.size() - 1, m_tabs.size() - 1 == m_selected);
    changed(Aspect::Items);
}

void TabStrip::select(std::size_t index) {
    if (index == m_selected) {
        return;
    }
    showPage(m_selected, false);
    m_selected = index;
    showPage(m_selected, true);
    changed(Aspect::Selection);
    if (const Handler handler = onChange) { // a copy: it may end the form that holds it
        handler();
    }
}

void TabStrip::userSelect(std::size_t index) {
    if (usable() && index < m_tabs.size()) {
        select(index);
    }
}

void TabStrip::showPage(std::size_t index, bool visible) {
    for (Control* const control : m_tabs[index].page) {
        control->setVisible(visible);
    }
}

} // namespace ui
