// What makes the control embeddable: the interfaces that a container of controls works with.
//
// Part of the control's automation object, with whose identity and references it answers. Nothing is made before the
// container asks for it: a control without a container is a plain automation object. There is nothing to edit in a
// design mode, and nothing to store.
#pragma once

#include "ui/user_control.h"
#include "windows/base/handles.h"
#include "windows/com/connection_point.h"
#include "windows/embedding/in_place_session.h"

#include <windows.h>

#include <ocidl.h>
#include <wrl/client.h>

#include <memory>

namespace windows::com {

class ControlEmbedding final : public IOleObject,
                               public IOleInPlaceObject,
                               public IOleInPlaceActiveObject,
                               public IOleControl,
                               public IViewObject,
                               public IPersistStreamInit {
public:
    // OLEMISC values; also in the registry.
    static constexpr DWORD kMiscStatus = OLEMISC_RECOMPOSEONRESIZE | OLEMISC_CANTLINKINSIDE | OLEMISC_INSIDEOUT |
                                         OLEMISC_ACTIVATEWHENVISIBLE | OLEMISC_SETCLIENTSITEFIRST;

    // `object` is the automation object that this is a part of, of the class `classId`; `events` is where its sinks
    // are.
    ControlEmbedding(IUnknown& object, REFCLSID classId, std::shared_ptr<ui::UserControl> control,
                     ConnectionPoint& events, WindowsDesktop& desktop) noexcept;
    ControlEmbedding(const ControlEmbedding&) = delete;
    ControlEmbedding& operator=(const ControlEmbedding&) = delete;

    // One of the interfaces, not counted; null for any other.
    [[nodiscard]] void* find(REFIID iid) noexcept;
    // What a method of the object holds while it runs: the dialogs that it shows belong to the container's window then.
    [[nodiscard]] std::shared_ptr<void> use() const;
    // The object goes: its window does, and what the control is doing ends soon.
    void end() noexcept;

    // IUnknown
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) noexcept override {
        return m_object.QueryInterface(iid, object);
    }
    ULONG STDMETHODCALLTYPE AddRef() noexcept override { return m_object.AddRef(); }
    ULONG STDMETHODCALLTYPE Release() noexcept override { return m_object.Release(); }

    // IOleObject
    HRESULT STDMETHODCALLTYPE SetClientSite(IOleClientSite* site) noexcept override;
    HRESULT STDMETHODCALLTYPE GetClientSite(IOleClientSite** site) noexcept override;
    HRESULT STDMETHODCALLTYPE SetHostNames(LPCOLESTR, LPCOLESTR) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Close(DWORD saveOption) noexcept override;
    HRESULT STDMETHODCALLTYPE SetMoniker(DWORD, IMoniker*) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker** moniker) noexcept override;
    HRESULT STDMETHODCALLTYPE InitFromData(IDataObject*, BOOL, DWORD) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetClipboardData(DWORD, IDataObject** data) noexcept override;
    HRESULT STDMETHODCALLTYPE DoVerb(LONG verb, MSG* message, IOleClientSite* activeSite, LONG index, HWND parent,
                                     LPCRECT place) noexcept override;
    HRESULT STDMETHODCALLTYPE EnumVerbs(IEnumOLEVERB** verbs) noexcept override;
    HRESULT STDMETHODCALLTYPE Update() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE IsUpToDate() noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetUserClassID(CLSID* classId) noexcept override { return GetClassID(classId); }
    HRESULT STDMETHODCALLTYPE GetUserType(DWORD form, LPOLESTR* name) noexcept override;
    HRESULT STDMETHODCALLTYPE SetExtent(DWORD aspect, SIZEL* size) noexcept override;
    HRESULT STDMETHODCALLTYPE GetExtent(DWORD aspect, SIZEL* size) noexcept override;
    HRESULT STDMETHODCALLTYPE Advise(IAdviseSink* sink, DWORD* cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE Unadvise(DWORD cookie) noexcept override;
    HRESULT STDMETHODCALLTYPE EnumAdvise(IEnumSTATDATA** advises) noexcept override;
    HRESULT STDMETHODCALLTYPE GetMiscStatus(DWORD aspect, DWORD* status) noexcept override;
    HRESULT STDMETHODCALLTYPE SetColorScheme(LOGPALETTE*) noexcept override { return E_NOTIMPL; }

    // IOleWindow, IOleInPlaceObject
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) noexcept override;
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InPlaceDeactivate() noexcept override;
    HRESULT STDMETHODCALLTYPE UIDeactivate() noexcept override;
    HRESULT STDMETHODCALLTYPE SetObjectRects(LPCRECT place, LPCRECT clip) noexcept override;
    HRESULT STDMETHODCALLTYPE ReactivateAndUndo() noexcept override { return INPLACE_E_NOTUNDOABLE; }

    // IOleInPlaceActiveObject
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG* message) noexcept override;
    HRESULT STDMETHODCALLTYPE OnFrameWindowActivate(BOOL) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE OnDocWindowActivate(BOOL) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ResizeBorder(LPCRECT, IOleInPlaceUIWindow*, BOOL) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL) noexcept override { return S_OK; }

    // IOleControl
    HRESULT STDMETHODCALLTYPE GetControlInfo(CONTROLINFO* info) noexcept override;
    HRESULT STDMETHODCALLTYPE OnMnemonic(MSG* message) noexcept override;
    HRESULT STDMETHODCALLTYPE OnAmbientPropertyChange(DISPID property) noexcept override;
    HRESULT STDMETHODCALLTYPE FreezeEvents(BOOL freeze) noexcept override;

    // IViewObject
    HRESULT STDMETHODCALLTYPE Draw(DWORD aspect, LONG index, void* aspectInfo, DVTARGETDEVICE* target, HDC targetDevice,
                                   HDC device, LPCRECTL bounds, LPCRECTL windowBounds,
                                   BOOL(STDMETHODCALLTYPE* goOn)(ULONG_PTR), ULONG_PTR goOnWith) noexcept override;
    HRESULT STDMETHODCALLTYPE GetColorSet(DWORD, LONG, void*, DVTARGETDEVICE*, HDC, LOGPALETTE**) noexcept override {
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Freeze(DWORD, LONG, void*, DWORD*) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Unfreeze(DWORD) noexcept override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) noexcept override;
    HRESULT STDMETHODCALLTYPE GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) noexcept override;

    // IPersistStreamInit
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID* classId) noexcept override;
    HRESULT STDMETHODCALLTYPE IsDirty() noexcept override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE Load(IStream*) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE Save(IStream*, BOOL) noexcept override { return S_OK; }
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) noexcept override;
    HRESULT STDMETHODCALLTYPE InitNew() noexcept override { return S_OK; }

private:
    static void destroyAccelerators(HACCEL table) noexcept { DestroyAcceleratorTable(table); }
    using Accelerators = UniqueResource<HACCEL, destroyAccelerators>;
    struct ViewAdvise {
        DWORD aspects = 0;
        DWORD flags = 0;
        Microsoft::WRL::ComPtr<IAdviseSink> sink;
    };

    void activate(IOleClientSite* site);
    void deactivate() noexcept;
    HRESULT needAdvises() noexcept;

    IUnknown& m_object;
    CLSID m_classId;
    std::shared_ptr<ui::UserControl> m_control;
    ConnectionPoint& m_events;
    WindowsDesktop& m_desktop;
    Microsoft::WRL::ComPtr<IOleClientSite> m_site;
    Microsoft::WRL::ComPtr<IOleAdviseHolder> m_advises; // made when the first one joins
    std::shared_ptr<InPlaceSession> m_opening;          // while the container is asked for a place
    std::shared_ptr<InPlaceSession> m_session;          // while the control is active
    Accelerators m_accelerators;                        // what the container was told last
    ViewAdvise m_viewAdvise;
    SIZEL m_extent; // hundredths of a millimetre
};

} // namespace windows::com
