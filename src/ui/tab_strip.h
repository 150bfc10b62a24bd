// A row of tabs, each with a page of the container's controls: those of the selected tab are shown, the others hidden.
#pragma once

#include "ui/control.h"
#include "ui/controls.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace ui {

class TabStrip : public Control {
public:
    using Control::Control;
    Handler onChange; // another tab is selected, by a person or by select()

    struct Tab {
        std::string title;          // "&" marks the mnemonic letter
        std::vector<Control*> page; // not owned; on this page only
    };

    [[nodiscard]] const std::vector<Tab>& tabs() const noexcept { return m_tabs; }
    // The first one added is selected, silently.
    void addTab(std::string_view title, std::vector<Control*> page);
    [[nodiscard]] std::size_t selected() const noexcept { return m_selected; }
    // `index` is that of a tab.
    void select(std::size_t index);
    void userSelect(std::size_t index);

private:
    void showPage(std::size_t index, bool visible);

    std::vector<Tab> m_tabs;
    std::size_t m_selected = 0;
};

} // namespace ui
