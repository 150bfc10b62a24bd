// A tab strip's window: a tab control as high as its tabs, above the pages' controls.
#pragma once

#include "ui/tab_strip.h"
#include "windows/forms/control_peer.h"

namespace windows {

class TabStripPeer final : public ControlPeer {
public:
    TabStripPeer(HWND window, ui::TabStrip& strip) noexcept : ControlPeer(window, strip), m_strip(strip) {}

    void update(Aspects aspects) override;
    void notify(NMHDR& header) override;
    void resized() override { cutOffPane(); }

private:
    void updateTabs();
    void updateSelection();
    // Leaves the tabs and the line below them: the pane's sides would only stick out.
    void cutOffPane();

    ui::TabStrip& m_strip;
};

} // namespace windows
