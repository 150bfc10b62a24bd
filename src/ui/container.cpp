#include "ui/container.h"

#include <algorithm>

namespace ui {

Control* Container::find(std::string_view name) const noexcept {
    const auto found = std::find_if(m_controls.begin(), m_controls.end(),
                                    [&](const Control* control) { return control->name() == name; });
    return found == m_controls.end() ? nullptr : *found;
}

} // namespace ui
