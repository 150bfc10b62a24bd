#include "windows/forms/user_control_peer.h"

#include "windows/forms/control_dialog.h"

namespace windows {
namespace {

// The child takes over the placeholder's id, place and turn in the tab order.
HWND replace(HWND placeholder, const ui::UserControl& control, DLGPROC proc) {
    const HWND form = GetParent(placeholder);
    auto* const module = reinterpret_cast<HINSTANCE>(GetWindowLongPtrW(form, GWLP_HINSTANCE));
    const HWND child = makeControlDialog(module, control, form, proc);
    RECT place{};
    GetWindowRect(placeholder, &place);
    MapWindowPoints(nullptr, form, reinterpret_cast<POINT*>(&place), 2);
    SetWindowLongPtrW(child, GWLP_ID, GetDlgCtrlID(placeholder));
    SetWindowPos(child, placeholder, place.left, place.top, place.right - place.left, place.bottom - place.top, 0);
    DestroyWindow(placeholder);
    return child;
}

} // namespace

UserControlPeer::UserControlPeer(HWND placeholder, ui::UserControlSite& site)
    : ControlPeer(replace(placeholder, site.content(), dialogProc), site), m_control(site.content()) {
    m_view = std::make_unique<ContainerView>(window(), m_control, m_control.name());
    SetWindowLongPtrW(window(), DWLP_USER, reinterpret_cast<LONG_PTR>(this));
    m_view->layout().arrange();
    m_control.observe(this);
}

UserControlPeer::~UserControlPeer() {
    m_control.observe(nullptr);
    SetWindowLongPtrW(window(), DWLP_USER, 0); // the window itself goes with the form's
}

void UserControlPeer::fontChanged(UINT dpi) {
    m_view->setDpi(dpi);
    m_view->layout().arrange();
}

INT_PTR CALLBACK UserControlPeer::dialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* const self = reinterpret_cast<UserControlPeer*>(GetWindowLongPtrW(window, DWLP_USER));
    if (self == nullptr) {
        return FALSE;
    }
    switch (message) {
    case WM_COMMAND:
    case WM_NOTIFY:
    case WM_DRAWITEM: SendMessageW(GetParent(window), message, wParam, lParam); return TRUE;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORLISTBOX: return SendMessageW(GetParent(window), message, wParam, lParam);
    case WM_SIZE: self->m_view->resized(); return TRUE;
    default: return FALSE;
    }
}

} // namespace windows
