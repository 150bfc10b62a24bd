// A user control on a form: a child dialog made from the control's own template, in the place that the form's template
// keeps for it. Its windows' messages go on to the form's window, which deals with them as with those of its own.
#pragma once

#include "ui/user_control.h"
#include "windows/base/handles.h"
#include "windows/forms/container_view.h"
#include "windows/forms/control_peer.h"

#include <memory>

namespace windows {

class UserControlPeer final : public ControlPeer, private ui::ContainerObserver {
public:
    // Puts the child dialog in the place of `placeholder`, which goes. Raises 51 as FormWindow does.
    UserControlPeer(HWND placeholder, ui::UserControlSite& site);
    ~UserControlPeer() override;

    [[nodiscard]] ContainerView* content() noexcept override { return m_view.get(); }
    void fontChanged(UINT dpi) override;

private:
    void controlChanged(ui::Control& control, ui::Aspect aspect) noexcept override { m_view->mark(control, aspect); }
    void captionChanged() noexcept override {}
    void hidden() noexcept override {}
    void focusMoved(ui::Control& control) noexcept override { m_view->moveFocus(control); }

    static INT_PTR CALLBACK dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;

    ui::UserControl& m_control;
    std::unique_ptr<ContainerView> m_view;
};

} // namespace windows
