#include "windows/container/container.h"

#include "windows/com/adopt.h"

#include <gtest/gtest.h>
#include <olectl.h>

namespace container_test {
namespace {

using Microsoft::WRL::ComPtr;
using windows::com::adopt;
using windows::com::ComObject;

std::string text(const RECT& r) {
    return std::to_string(r.left) + "," + std::to_string(r.top) + "," + std::to_string(r.right) + "," +
           std::to_string(r.bottom);
}

class Frame final : public ComObject<IOleInPlaceFrame> {
public:
    explicit Frame(Container& container) : m_container(container) {}

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_container.window();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetBorder(LPRECT) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE RequestBorderSpace(LPCBORDERWIDTHS) override { return INPLACE_E_NOTOOLSPACE; }
    HRESULT STDMETHODCALLTYPE SetBorderSpace(LPCBORDERWIDTHS widths) override {
        return widths == nullptr ? S_OK : m_container.note("SetBorderSpace");
    }
    HRESULT STDMETHODCALLTYPE SetActiveObject(IOleInPlaceActiveObject* object, LPCOLESTR) override {
        m_container.setActive(object);
        return m_container.note(object == nullptr ? "SetActiveObject none" : "SetActiveObject");
    }
    HRESULT STDMETHODCALLTYPE InsertMenus(HMENU, LPOLEMENUGROUPWIDTHS) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetMenu(HMENU, HOLEMENU, HWND) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveMenus(HMENU) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetStatusText(LPCOLESTR) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE EnableModeless(BOOL enable) override {
        return m_container.note(enable ? "EnableModeless yes" : "EnableModeless no");
    }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(LPMSG, WORD) override { return S_FALSE; }

private:
    Container& m_container;
};

} // namespace

class Site final : public ComObject<IOleClientSite, IOleInPlaceSite, IOleControlSite, IDispatch> {
public:
    explicit Site(Container& container) : m_container(container) {}

    // IOleClientSite
    HRESULT STDMETHODCALLTYPE SaveObject() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetMoniker(DWORD, DWORD, IMoniker**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetContainer(IOleContainer** container) override {
        *container = nullptr;
        return E_NOINTERFACE;
    }
    HRESULT STDMETHODCALLTYPE ShowObject() override { return m_container.note("ShowObject"); }
    HRESULT STDMETHODCALLTYPE OnShowWindow(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE RequestNewObjectLayout() override { return E_NOTIMPL; }

    // IOleInPlaceSite
    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = m_container.window();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE CanInPlaceActivate() override { return m_container.note("CanInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceActivate() override { return m_container.note("OnInPlaceActivate"); }
    HRESULT STDMETHODCALLTYPE OnUIActivate() override { return m_container.note("OnUIActivate"); }
    HRESULT STDMETHODCALLTYPE GetWindowContext(IOleInPlaceFrame** frame, IOleInPlaceUIWindow** document, LPRECT place,
                                               LPRECT clip, LPOLEINPLACEFRAMEINFO) override {
        *frame = adopt(new Frame(m_container)).Detach();
        *document = nullptr;
        *place = Container::kPlace;
        *clip = {0, 0, 800, 600};
        return m_container.note("GetWindowContext");
    }
    HRESULT STDMETHODCALLTYPE Scroll(SIZE) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnUIDeactivate(BOOL) override { return m_container.note("OnUIDeactivate"); }
    HRESULT STDMETHODCALLTYPE OnInPlaceDeactivate() override { return m_container.note("OnInPlaceDeactivate"); }
    HRESULT STDMETHODCALLTYPE DiscardUndoState() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE DeactivateAndUndo() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE OnPosRectChange(LPCRECT place) override {
        ComPtr<IOleInPlaceObject> inPlace;
        m_container.object.As(&inPlace);
        inPlace->SetObjectRects(place, place);
        return m_container.note("OnPosRectChange", text(*place));
    }

    // IOleControlSite
    HRESULT STDMETHODCALLTYPE OnControlInfoChanged() override { return m_container.note("OnControlInfoChanged"); }
    HRESULT STDMETHODCALLTYPE LockInPlaceActive(BOOL) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetExtendedControl(IDispatch**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TransformCoords(POINTL*, POINTF*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE TranslateAccelerator(MSG*, DWORD modifiers) override {
        const bool back = (modifiers & 1) != 0;
        SetFocus(back ? m_container.fieldBefore() : m_container.fieldBehind());
        return m_container.note(back ? "Tab back" : "Tab on");
    }
    HRESULT STDMETHODCALLTYPE OnFocus(BOOL got) override {
        return m_container.note(got ? "OnFocus got" : "OnFocus lost");
    }
    HRESULT STDMETHODCALLTYPE ShowPropertyFrame() override { return E_NOTIMPL; }

    // IDispatch: the ambient properties
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                                     UINT*) override {
        if (id != DISPID_AMBIENT_BACKCOLOR && id != DISPID_AMBIENT_FORECOLOR) {
            return DISP_E_MEMBERNOTFOUND;
        }
        V_VT(result) = VT_I4;
        V_I4(result) =
            static_cast<LONG>(id == DISPID_AMBIENT_BACKCOLOR ? m_container.backColor : m_container.foreColor);
        return S_OK;
    }

private:
    Container& m_container;
};

Container::Container(ComPtr<IUnknown> control) {
    WNDCLASSW description{};
    description.lpfnWndProc = DefWindowProcW;
    description.lpszClassName = L"TestContainer";
    RegisterClassW(&description); // fails when an earlier test has done it
    m_window = CreateWindowExW(WS_EX_CONTROLPARENT, description.lpszClassName, L"Container", WS_OVERLAPPED | WS_VISIBLE,
                               0, 0, 800, 600, nullptr, nullptr, nullptr, nullptr);
    const auto field = [&](int left) {
        return CreateWindowW(L"Edit", L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, left, 0, 100, 20, m_window, nullptr,
                             nullptr, nullptr);
    };
    m_before = field(0);
    m_behind = field(200);
    EXPECT_EQ(control.As(&object), S_OK);
    site = adopt(new Site(*this));
    EXPECT_EQ(object->SetClientSite(site.Get()), S_OK);
}

Container::~Container() {
    close();
    DestroyWindow(m_window);
}

HWND Container::controlWindow() const {
    ComPtr<IOleWindow> control;
    HWND window = nullptr;
    if (object && SUCCEEDED(object.As(&control))) {
        control->GetWindow(&window);
    }
    return window;
}

HRESULT Container::doVerb(LONG verb, MSG* message) {
    return object->DoVerb(verb, message, site.Get(), 0, m_window, &kPlace);
}

void Container::close() {
    if (const ComPtr<IOleObject> control = object) {
        object.Reset();
        control->Close(OLECLOSE_NOSAVE);
        control->SetClientSite(nullptr);
    }
    m_active.Reset();
}

void Container::letGo() {
    object.Reset();
    m_active.Reset();
}

void Container::runUntil(const std::function<bool()>& done) {
    const UINT_PTR wakeUp = SetTimer(nullptr, 0, 20, nullptr);
    const ULONGLONG deadline = GetTickCount64() + 10'000;
    MSG message;
    while (!done() && GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (GetTickCount64() > deadline) {
            ADD_FAILURE() << "it never happened";
            break;
        }
        const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
        if (isKey && m_active && m_active->TranslateAccelerator(&message) == S_OK) {
            continue;
        }
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    KillTimer(nullptr, wakeUp);
}

HRESULT Container::note(const std::string& method, const std::string& details) {
    calls.push_back(details.empty() ? method : method + " " + details);
    const std::string call = calls.back();
    if (onCall) {
        onCall(call);
    }
    return answer ? answer(method) : S_OK;
}

} // namespace container_test
