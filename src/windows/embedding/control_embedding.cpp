#include "windows/embedding/control_embedding.h"

#include "base/runtime_error.h"
#include "windows/com/error_boundary.h"
#include "windows/embedding/ambient_properties.h"
#include "windows/embedding/control_picture.h"
#include "windows/embedding/himetric.h"

#include <olectl.h>

#include <string>
#include <utility>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

// The template's size, in the font of Windows, at 96 dots per inch.
constexpr SIZE kNaturalSize{665, 435};

// A document verb that a control has no use for.
template <typename T>
HRESULT nothing(T** result) noexcept {
    if (result == nullptr) {
        return E_POINTER;
    }
    *result = nullptr;
    return E_NOTIMPL;
}

} // namespace

ControlEmbedding::ControlEmbedding(IUnknown& object, REFCLSID classId, std::shared_ptr<ui::UserControl> control,
                                   ConnectionPoint& events, WindowsDesktop& desktop) noexcept
    : m_object(object),
      m_classId(classId),
      m_control(std::move(control)),
      m_events(events),
      m_desktop(desktop),
      m_extent(toHimetric(kNaturalSize, {kBaseDpi, kBaseDpi})) {}

void* ControlEmbedding::find(REFIID iid) noexcept {
    if (iid == IID_IOleObject) {
        return static_cast<IOleObject*>(this);
    }
    if (iid == IID_IOleInPlaceObject || iid == IID_IOleWindow) {
        return static_cast<IOleInPlaceObject*>(this);
    }
    if (iid == IID_IOleInPlaceActiveObject) {
        return static_cast<IOleInPlaceActiveObject*>(this);
    }
    if (iid == IID_IOleControl) {
        return static_cast<IOleControl*>(this);
    }
    if (iid == IID_IViewObject) {
        return static_cast<IViewObject*>(this);
    }
    if (iid == IID_IPersistStreamInit || iid == IID_IPersist) {
        return static_cast<IPersistStreamInit*>(this);
    }
    return nullptr;
}

void ControlEmbedding::end() noexcept {
    m_control->stop();
    deactivate();
}

HRESULT ControlEmbedding::SetClientSite(IOleClientSite* site) noexcept {
    const ComPtr<IUnknown> self(&m_object);
    if (m_site.Get() != site) {
        deactivate(); // its window is the old container's
        m_site = site;
    }
    return S_OK;
}

HRESULT ControlEmbedding::GetClientSite(IOleClientSite** site) noexcept {
    return site == nullptr ? E_POINTER : m_site.CopyTo(site);
}

// There is nothing to save, whatever the option.
HRESULT ControlEmbedding::Close(DWORD /*saveOption*/) noexcept {
    const ComPtr<IUnknown> self(&m_object);
    end();
    if (m_advises) {
        m_advises->SendOnClose();
    }
    return S_OK;
}

HRESULT ControlEmbedding::GetMoniker(DWORD, DWORD, IMoniker** moniker) noexcept {
    return nothing(moniker);
}

HRESULT ControlEmbedding::GetClipboardData(DWORD, IDataObject** data) noexcept {
    return nothing(data);
}

HRESULT ControlEmbedding::DoVerb(LONG verb, MSG* message, IOleClientSite* activeSite, LONG /*index*/, HWND /*parent*/,
                                 LPCRECT /*place*/) noexcept {
    if (m_opening) {
        return OLEOBJ_S_CANNOT_DOVERB_NOW; // the container is asked about an earlier verb and comes back with this one
    }
    const ComPtr<IUnknown> self(&m_object);
    bool known = true;
    const HRESULT result = guarded(IID_IOleObject, [&] {
        switch (verb) {
        case OLEIVERB_SHOW:
        case OLEIVERB_OPEN: // there is no window apart from the container's
        case OLEIVERB_INPLACEACTIVATE: activate(activeSite); break;
        case OLEIVERB_HIDE: deactivate(); break;
        case OLEIVERB_DISCARDUNDOSTATE: break; // there is none
        default:
            if (verb < 0) {
                throw base::RuntimeError(E_NOTIMPL, "No such verb");
            }
            known = verb == OLEIVERB_PRIMARY;
            [[fallthrough]]; // a verb of an object's own that it does not have counts as the primary one
        case OLEIVERB_UIACTIVATE:
            activate(activeSite);
            if (const auto session = m_session) {
                session->activateUi(message);
            }
        }
    });
    return SUCCEEDED(result) && !known ? OLEOBJ_S_INVALIDVERB : result;
}

void ControlEmbedding::activate(IOleClientSite* site) {
    const ComPtr<IOleClientSite> client(site == nullptr ? m_site.Get() : site);
    if (!client) {
        throw base::RuntimeError(E_UNEXPECTED, "The control is in no container");
    }
    if (m_session) {
        return;
    }
    const auto session = m_opening = std::make_shared<InPlaceSession>(*this);
    try {
        session->open(m_desktop, m_control, *client.Get());
    } catch (...) {
        m_opening = nullptr;
        throw;
    }
    m_session = std::exchange(m_opening, nullptr);
    session->window().setColors(ambientColors(*client.Get()));
}

void ControlEmbedding::deactivate() noexcept {
    for (std::shared_ptr<InPlaceSession>* const slot : {&m_opening, &m_session}) {
        if (const std::shared_ptr<InPlaceSession> session = std::exchange(*slot, nullptr)) {
            session->end();
        }
    }
}

std::shared_ptr<void> ControlEmbedding::use() const {
    return m_session ? std::make_shared<ControlWindow::Use>(m_session->window()) : nullptr;
}

HRESULT ControlEmbedding::EnumVerbs(IEnumOLEVERB** verbs) noexcept {
    static_cast<void>(nothing(verbs));
    return verbs == nullptr ? E_POINTER : OLEOBJ_E_NOVERBS; // none that a person could choose from a menu
}

HRESULT ControlEmbedding::GetUserType(DWORD form, LPOLESTR* name) noexcept {
    return OleRegGetUserType(m_classId, form, name);
}

HRESULT ControlEmbedding::SetExtent(DWORD aspect, SIZEL* size) noexcept {
    if (size == nullptr) {
        return E_POINTER;
    }
    if (aspect != DVASPECT_CONTENT) {
        return DV_E_DVASPECT;
    }
    if (size->cx < 0 || size->cy < 0) {
        return E_INVALIDARG;
    }
    const ComPtr<IUnknown> self(&m_object);
    return guarded(IID_IOleObject, [&] {
        m_extent = *size;
        if (const auto session = m_session) {
            session->askForSize(toPixels(m_extent, screenResolution()));
        }
    });
}

HRESULT ControlEmbedding::GetExtent(DWORD aspect, SIZEL* size) noexcept {
    if (size == nullptr) {
        return E_POINTER;
    }
    *size = m_extent;
    return aspect == DVASPECT_CONTENT ? S_OK : DV_E_DVASPECT;
}

HRESULT ControlEmbedding::needAdvises() noexcept {
    return m_advises ? S_OK : CreateOleAdviseHolder(&m_advises);
}

HRESULT ControlEmbedding::Advise(IAdviseSink* sink, DWORD* cookie) noexcept {
    const HRESULT result = needAdvises();
    return FAILED(result) ? result : m_advises->Advise(sink, cookie);
}

HRESULT ControlEmbedding::Unadvise(DWORD cookie) noexcept {
    return m_advises ? m_advises->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

HRESULT ControlEmbedding::EnumAdvise(IEnumSTATDATA** advises) noexcept {
    const HRESULT result = needAdvises();
    return FAILED(result) ? result : m_advises->EnumAdvise(advises);
}

HRESULT ControlEmbedding::GetMiscStatus(DWORD aspect, DWORD* status) noexcept {
    if (status == nullptr) {
        return E_POINTER;
    }
    *status = aspect == DVASPECT_CONTENT ? kMiscStatus : 0;
    return S_OK;
}

HRESULT ControlEmbedding::Draw(DWORD aspect, LONG /*index*/, void* /*aspectInfo*/, DVTARGETDEVICE* /*target*/,
                               HDC /*targetDevice*/, HDC device, LPCRECTL bounds, LPCRECTL /*windowBounds*/,
                               BOOL(STDMETHODCALLTYPE* /*goOn*/)(ULONG_PTR), ULONG_PTR /*goOnWith*/) noexcept {
    if (device == nullptr || bounds == nullptr) {
        return E_POINTER;
    }
    if (aspect != DVASPECT_CONTENT) {
        return DV_E_DVASPECT;
    }
    return guarded(IID_IViewObject, [&] {
        drawInactive(device, {bounds->left, bounds->top, bounds->right, bounds->bottom});
    });
}

// One sink at a time. It never hears of a change: what is drawn is always the same.
HRESULT ControlEmbedding::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept {
    m_viewAdvise = {aspects, flags, sink};
    if (sink != nullptr && (flags & ADVF_PRIMEFIRST) != 0) {
        const ComPtr<IAdviseSink> held(sink);
        if ((flags & ADVF_ONLYONCE) != 0) {
            m_viewAdvise = {};
        }
        held->OnViewChange(DVASPECT_CONTENT, -1);
    }
    return S_OK;
}

HRESULT ControlEmbedding::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept {
    if (aspects != nullptr) {
        *aspects = m_viewAdvise.aspects;
    }
    if (flags != nullptr) {
        *flags = m_viewAdvise.flags;
    }
    return sink == nullptr ? S_OK : m_viewAdvise.sink.CopyTo(sink);
}

HRESULT ControlEmbedding::GetClassID(CLSID* classId) noexcept {
    if (classId == nullptr) {
        return E_POINTER;
    }
    *classId = m_classId;
    return S_OK;
}

HRESULT ControlEmbedding::GetSizeMax(ULARGE_INTEGER* size) noexcept {
    if (size == nullptr) {
        return E_POINTER;
    }
    size->QuadPart = 0;
    return S_OK;
}

} // namespace windows::com
