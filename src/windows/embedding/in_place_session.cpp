#include "windows/embedding/in_place_session.h"

#include "base/runtime_error.h"
#include "windows/base/module.h"

#include <utility>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

// The keys held down now, as a container wants them beside a key message.
DWORD heldModifiers() noexcept {
    constexpr DWORD kShift = 1;
    constexpr DWORD kControl = 2;
    constexpr DWORD kAlt = 4;
    return (GetKeyState(VK_SHIFT) < 0 ? kShift : 0) | (GetKeyState(VK_CONTROL) < 0 ? kControl : 0) |
           (GetKeyState(VK_MENU) < 0 ? kAlt : 0);
}

} // namespace

// A container may answer with any success but the one that is meant.
void InPlaceSession::require(HRESULT answer) const {
    if (answer != S_OK) {
        throw base::RuntimeError(FAILED(answer) ? answer : E_FAIL, "The container does not show the control");
    }
    if (m_object == nullptr) {
        throw base::RuntimeError(E_ABORT, "The container closed the control that it was about to show");
    }
}

void InPlaceSession::open(WindowsDesktop& desktop, const std::shared_ptr<ui::UserControl>& control,
                          IOleClientSite& client) {
    const auto self = shared_from_this();
    try {
        require(client.QueryInterface(IID_PPV_ARGS(&m_site)));
        require(m_site->CanInPlaceActivate());
        m_active = true;
        const HRESULT answer = m_site->OnInPlaceActivate();
        m_active = m_active && SUCCEEDED(answer);
        require(answer);
        makeWindow(desktop, control, client);
    } catch (...) {
        end();
        throw;
    }
}

void InPlaceSession::makeWindow(WindowsDesktop& desktop, const std::shared_ptr<ui::UserControl>& control,
                                IOleClientSite& client) {
    static_cast<void>(client.QueryInterface(IID_PPV_ARGS(&m_controlSite)));
    HWND parent = nullptr;
    require(m_site->GetWindow(&parent));
    RECT place{};
    RECT clip{};
    OLEINPLACEFRAMEINFO accelerators{};
    accelerators.cb = sizeof accelerators;
    require(m_site->GetWindowContext(&m_frame, &m_document, &place, &clip, &accelerators));
    m_window = ControlWindow::create(desktop, moduleHandle(), control, parent, place, *this);
    m_window->setPlace(place, clip);
    static_cast<void>(client.ShowObject()); // scrolls it into view, where that means something
    require(S_OK);
}

void InPlaceSession::activateUi(const MSG* key) {
    const auto self = shared_from_this();
    if (m_object == nullptr) {
        return;
    }
    if (!std::exchange(m_uiActive, true)) {
        if (const HRESULT result = m_site->OnUIActivate(); FAILED(result)) {
            m_uiActive = false;
            require(result);
        }
        showActiveObject(m_object);
    }
    if (m_window) {
        m_window->takeFocus(key);
    }
}

void InPlaceSession::deactivateUi() noexcept {
    const auto self = shared_from_this();
    if (std::exchange(m_uiActive, false)) {
        showActiveObject(nullptr);
        m_site->OnUIDeactivate(FALSE);
    }
}

void InPlaceSession::end() noexcept {
    const auto self = shared_from_this();
    if (m_object == nullptr) {
        return;
    }
    deactivateUi();
    m_object = nullptr;
    if (m_window) {
        m_window->close();
    }
    while (m_waits != 0) { // a dialog that is still there is nobody's
        hostWaits(false);
    }
    if (std::exchange(m_active, false)) {
        m_site->OnInPlaceDeactivate();
    }
}

// We have neither menus nor toolbars: the container's own stay where they are.
void InPlaceSession::showActiveObject(IOleInPlaceActiveObject* object) const noexcept {
    const wchar_t* const name = object == nullptr ? nullptr : L"QuorvantisImage";
    for (IOleInPlaceUIWindow* const window : {static_cast<IOleInPlaceUIWindow*>(m_frame.Get()), m_document.Get()}) {
        if (window != nullptr) {
            window->SetActiveObject(object, name);
            if (object != nullptr) {
                window->SetBorderSpace(nullptr);
            }
        }
    }
}

void InPlaceSession::askForSize(SIZE pixels) {
    const auto self = shared_from_this();
    RECT place{};
    if (m_object == nullptr || !m_window || !GetWindowRect(m_window->handle(), &place)) {
        return;
    }
    MapWindowPoints(nullptr, GetParent(m_window->handle()), reinterpret_cast<POINT*>(&place), 2);
    if (pixels.cx != place.right - place.left || pixels.cy != place.bottom - place.top) {
        place.right = place.left + pixels.cx;
        place.bottom = place.top + pixels.cy;
        m_site->OnPosRectChange(&place);
    }
}

void InPlaceSession::focusMoved(bool inside) noexcept {
    const auto self = shared_from_this();
    if (inside) {
        try {
            activateUi(nullptr);
        } catch (const base::RuntimeError&) {
            // The container refused: the control takes input all the same, as far as the container lets keys through.
        }
    }
    if (m_controlSite && m_object != nullptr) {
        m_controlSite->OnFocus(inside ? TRUE : FALSE);
    }
}

void InPlaceSession::mnemonicsChanged() noexcept {
    const auto self = shared_from_this();
    if (m_controlSite) {
        m_controlSite->OnControlInfoChanged();
    }
}

void InPlaceSession::hostWaits(bool begins) noexcept {
    const auto self = shared_from_this();
    m_waits += begins ? 1 : -1;
    if (m_frame) {
        m_frame->EnableModeless(begins ? FALSE : TRUE);
    }
}

bool InPlaceSession::takesTab(MSG& message) noexcept {
    const auto self = shared_from_this();
    return m_controlSite && m_controlSite->TranslateAccelerator(&message, heldModifiers()) == S_OK;
}

} // namespace windows::com
