// The control's stay in a container's window, from its activation to its deactivation: what the two tell each other.
#pragma once

#include "ui/user_control.h"
#include "windows/forms/control_window.h"

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

#include <memory>

namespace windows::com {

class InPlaceSession final : public std::enable_shared_from_this<InPlaceSession>, private ControlWindow::Owner {
public:
    // `object` is what the container talks to while the control is active; it outlives the time until end().
    explicit InPlaceSession(IOleInPlaceActiveObject& object) noexcept : m_object(&object) {}

    // Puts the control into the window that the container offers through `client`. Raises the container's refusal, 51,
    // and E_ABORT when the container, asked for this or that, ends the session; it has ended then.
    void open(WindowsDesktop& desktop, const std::shared_ptr<ui::UserControl>& control, IOleClientSite& client);
    // Takes the keyboard, and the container's menus and borders for its time. `key`: what brought it here, or null.
    void activateUi(const MSG* key);
    void deactivateUi() noexcept;
    // The window goes, and the container is told.
    void end() noexcept;

    [[nodiscard]] ControlWindow& window() const noexcept { return *m_window; }
    // The control wants another size; the container has the last word.
    void askForSize(SIZE pixels);

private:
    void makeWindow(WindowsDesktop& desktop, const std::shared_ptr<ui::UserControl>& control, IOleClientSite& client);
    void require(HRESULT answer) const;
    void showActiveObject(IOleInPlaceActiveObject* object) const noexcept;

    void focusMoved(bool inside) noexcept override;
    void mnemonicsChanged() noexcept override;
    void hostWaits(bool begins) noexcept override;
    [[nodiscard]] bool takesTab(MSG& message) noexcept override;

    IOleInPlaceActiveObject* m_object; // null once ended
    Microsoft::WRL::ComPtr<IOleInPlaceSite> m_site;
    Microsoft::WRL::ComPtr<IOleControlSite> m_controlSite; // null for a container that has none
    Microsoft::WRL::ComPtr<IOleInPlaceFrame> m_frame;
    Microsoft::WRL::ComPtr<IOleInPlaceUIWindow> m_document; // null where the frame is all there is
    std::shared_ptr<ControlWindow> m_window;
    bool m_active = false;
    bool m_uiActive = false;
    int m_waits = 0;
};

} // namespace windows::com
