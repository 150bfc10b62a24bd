// The control's embedding while it is active: its place, its keys, and what containers tell active controls.
#include "windows/embedding/control_embedding.h"

#include "windows/com/error_boundary.h"
#include "windows/embedding/ambient_properties.h"
#include "windows/embedding/himetric.h"

#include <olectl.h>

#include <cwctype>
#include <string>
#include <vector>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

// Hosts compare key messages with either kind of entry.
std::vector<ACCEL> acceleratorsOf(const std::u16string& letters) {
    std::vector<ACCEL> table;
    for (const char16_t letter : letters) {
        table.push_back({FALT | FVIRTKEY, letter, 0});
        table.push_back({FALT, static_cast<WORD>(std::towlower(letter)), 0});
    }
    return table;
}

} // namespace

HRESULT ControlEmbedding::GetWindow(HWND* window) noexcept {
    if (window == nullptr) {
        return E_POINTER;
    }
    *window = m_session ? m_session->window().handle() : nullptr;
    return *window == nullptr ? E_FAIL : S_OK;
}

HRESULT ControlEmbedding::InPlaceDeactivate() noexcept {
    const ComPtr<IUnknown> self(&m_object);
    deactivate();
    return S_OK;
}

HRESULT ControlEmbedding::UIDeactivate() noexcept {
    const ComPtr<IUnknown> self(&m_object);
    if (const auto session = m_session) {
        session->deactivateUi();
    }
    return S_OK;
}

HRESULT ControlEmbedding::SetObjectRects(LPCRECT place, LPCRECT clip) noexcept {
    if (place == nullptr) {
        return E_POINTER;
    }
    if (!m_session) {
        return E_UNEXPECTED;
    }
    const ComPtr<IUnknown> self(&m_object);
    return guarded(IID_IOleInPlaceObject, [&] {
        m_extent = toHimetric({place->right - place->left, place->bottom - place->top}, screenResolution());
        m_session->window().setPlace(*place, clip == nullptr ? *place : *clip);
    });
}

HRESULT ControlEmbedding::TranslateAccelerator(MSG* message) noexcept {
    if (message == nullptr) {
        return E_POINTER;
    }
    const ComPtr<IUnknown> self(&m_object);
    const auto session = m_session;
    bool taken = false;
    const HRESULT result =
        guarded(IID_IOleInPlaceActiveObject, [&] { taken = session && session->window().preview(*message); });
    return FAILED(result) || taken ? result : S_FALSE;
}

HRESULT ControlEmbedding::GetControlInfo(CONTROLINFO* info) noexcept {
    if (info == nullptr) {
        return E_POINTER;
    }
    return guarded(IID_IOleControl, [&] {
        const std::vector<ACCEL> table = acceleratorsOf(m_session ? m_session->window().mnemonics() : u"");
        const int count = static_cast<int>(table.size());
        m_accelerators =
            Accelerators(count == 0 ? nullptr : CreateAcceleratorTableW(const_cast<ACCEL*>(table.data()), count));
        info->hAccel = m_accelerators.get();
        info->cAccel = static_cast<USHORT>(m_accelerators ? count : 0);
        info->dwFlags = CTRLINFO_EATS_RETURN | CTRLINFO_EATS_ESCAPE;
    });
}

// Of a key message with Alt, the virtual key of a letter is that letter.
HRESULT ControlEmbedding::OnMnemonic(MSG* message) noexcept {
    if (message == nullptr) {
        return E_POINTER;
    }
    const ComPtr<IUnknown> self(&m_object);
    return guarded(IID_IOleControl, [&] {
        if (const auto session = m_session) {
            static_cast<void>(session->window().pressMnemonic(static_cast<char16_t>(message->wParam)));
        }
    });
}

HRESULT ControlEmbedding::OnAmbientPropertyChange(DISPID property) noexcept {
    const ComPtr<IUnknown> self(&m_object);
    const bool concernsColors = property == DISPID_AMBIENT_BACKCOLOR || property == DISPID_AMBIENT_FORECOLOR ||
                                property == DISPID_UNKNOWN; // several at once
    return guarded(IID_IOleControl, [&] {
        if (const auto session = m_session; session && m_site && concernsColors) {
            session->window().setColors(ambientColors(*m_site.Get()));
        }
    });
}

HRESULT ControlEmbedding::FreezeEvents(BOOL freeze) noexcept {
    m_events.freeze(freeze != FALSE);
    return S_OK;
}

} // namespace windows::com
