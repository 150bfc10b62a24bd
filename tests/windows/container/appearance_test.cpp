// What a container can say about the control's size and colours, and what it can ask of one that it does not activate.
#include "windows/container/embedded.h"

#include <gtest/gtest.h>
#include <olectl.h>

namespace container_test {
namespace {

using Microsoft::WRL::ComPtr;

SIZE sizeOf(HWND window) {
    RECT place{};
    GetWindowRect(window, &place);
    return {place.right - place.left, place.bottom - place.top};
}

HBRUSH backgroundOf(HWND dialog, UINT message, HWND window) {
    const HDC device = GetDC(window);
    const auto brush = reinterpret_cast<HBRUSH>(
        SendMessageW(dialog, message, reinterpret_cast<WPARAM>(device), reinterpret_cast<LPARAM>(window)));
    ReleaseDC(window, device);
    return brush;
}

COLORREF textColorIn(HWND dialog) {
    const HDC device = GetDC(dialog);
    SendMessageW(dialog, WM_CTLCOLORDLG, reinterpret_cast<WPARAM>(device), reinterpret_cast<LPARAM>(dialog));
    const COLORREF color = GetTextColor(device);
    ReleaseDC(dialog, device);
    return color;
}

// Writes down what it is told.
class AdviseSink final : public windows::com::ComObject<IAdviseSink> {
public:
    explicit AdviseSink(Calls& heard) : m_heard(heard) {}

    void STDMETHODCALLTYPE OnDataChange(FORMATETC*, STGMEDIUM*) override {}
    void STDMETHODCALLTYPE OnViewChange(DWORD, LONG) override { m_heard.push_back("OnViewChange"); }
    void STDMETHODCALLTYPE OnRename(IMoniker*) override {}
    void STDMETHODCALLTYPE OnSave() override {}
    void STDMETHODCALLTYPE OnClose() override { m_heard.push_back("OnClose"); }

private:
    Calls& m_heard;
};

COLORREF colorOf(HBRUSH brush) {
    LOGBRUSH description{};
    GetObjectW(brush, sizeof description, &description);
    return description.lbColor;
}

TEST_F(Embedded, TheContainerDecidesOnTheSize) {
    SIZEL natural{};
    ASSERT_EQ(container.object->GetExtent(DVASPECT_CONTENT, &natural), S_OK);
    EXPECT_NEAR(static_cast<double>(natural.cx) / natural.cy, 665.0 / 435, 0.01);
    EXPECT_EQ(container.object->GetExtent(DVASPECT_ICON, &natural), DV_E_DVASPECT);

    container.doVerb(OLEIVERB_INPLACEACTIVATE);
    EXPECT_EQ(sizeOf(container.controlWindow()).cx, 700);
    EXPECT_EQ(sizeOf(container.controlWindow()).cy, 500);
    const SIZE list = sizeOf(window("lvCommands"));

    container.calls.clear();
    SIZEL wanted{2540 * 8, 2540 * 6}; // inches, at 96 dots each
    EXPECT_EQ(container.object->SetExtent(DVASPECT_CONTENT, &wanted), S_OK);
    EXPECT_EQ(container.calls, Calls{"OnPosRectChange 50,40,818,616"});
    EXPECT_EQ(sizeOf(container.controlWindow()).cx, 768);
    EXPECT_EQ(sizeOf(window("lvCommands")).cx, list.cx + 68) << "grows along";
    EXPECT_EQ(container.object->SetExtent(DVASPECT_CONTENT, &wanted), S_OK);
    EXPECT_EQ(container.calls.size(), 1U) << "nothing new";
    EXPECT_EQ(container.object->SetExtent(DVASPECT_ICON, &wanted), DV_E_DVASPECT);
    SIZEL negative{-1, 1};
    EXPECT_EQ(container.object->SetExtent(DVASPECT_CONTENT, &negative), E_INVALIDARG);

    const RECT place{0, 0, 700, 480};
    const RECT clip{0, 0, 700, 100};
    EXPECT_EQ(as<IOleInPlaceObject>()->SetObjectRects(&place, &clip), S_OK);
    SIZEL extent{};
    container.object->GetExtent(DVASPECT_CONTENT, &extent);
    EXPECT_EQ(extent.cy, 12700) << "480 pixels, however few are shown";
    RECT shown{};
    EXPECT_EQ(GetWindowRgnBox(container.controlWindow(), &shown), SIMPLEREGION);
    EXPECT_EQ(shown.bottom, 100);
    EXPECT_EQ(as<IOleInPlaceObject>()->SetObjectRects(&place, &place), S_OK);
    EXPECT_EQ(GetWindowRgnBox(container.controlWindow(), &shown), ERROR) << "all of it again";
}

TEST_F(Embedded, TheContainersColoursReachWhatHasNoneOfItsOwn) {
    container.backColor = RGB(10, 20, 30);
    container.doVerb(OLEIVERB_INPLACEACTIVATE);
    const HWND dialog = container.controlWindow();
    EXPECT_EQ(colorOf(backgroundOf(dialog, WM_CTLCOLORDLG, dialog)), RGB(10, 20, 30));
    EXPECT_EQ(colorOf(backgroundOf(dialog, WM_CTLCOLORSTATIC, window("lProgress"))), RGB(10, 20, 30));
    EXPECT_EQ(textColorIn(dialog), RGB(255, 0, 0));
    engine->lProgress.setBackColor(RGB(1, 2, 3));
    EXPECT_EQ(colorOf(backgroundOf(dialog, WM_CTLCOLORSTATIC, window("lProgress"))), RGB(1, 2, 3));

    container.backColor = 0x80000000 | COLOR_WINDOW;
    const auto control = as<IOleControl>();
    EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_AMBIENT_FONT), S_OK);
    EXPECT_EQ(colorOf(backgroundOf(dialog, WM_CTLCOLORDLG, dialog)), RGB(10, 20, 30)) << "not asked again yet";
    EXPECT_EQ(control->OnAmbientPropertyChange(DISPID_UNKNOWN), S_OK);
    EXPECT_EQ(colorOf(backgroundOf(dialog, WM_CTLCOLORDLG, dialog)), GetSysColor(COLOR_WINDOW));
}

TEST_F(Embedded, IsDrawnWithoutAWindow) {
    const HDC screen = GetDC(nullptr);
    const HDC device = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, 200, 100);
    SelectObject(device, bitmap);
    PatBlt(device, 0, 0, 200, 100, BLACKNESS);
    SetTextColor(device, RGB(1, 2, 3));
    const RECTL bounds{10, 10, 190, 90};
    const auto view = as<IViewObject>();
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, device, &bounds, nullptr, nullptr, 0), S_OK);
    EXPECT_EQ(GetPixel(device, 15, 15), GetSysColor(COLOR_BTNFACE));
    EXPECT_EQ(GetPixel(device, 5, 5), RGB(0, 0, 0)) << "nothing outside";
    EXPECT_EQ(GetTextColor(device), RGB(1, 2, 3)) << "as it was";
    EXPECT_EQ(view->Draw(DVASPECT_ICON, -1, nullptr, nullptr, nullptr, device, &bounds, nullptr, nullptr, 0),
              DV_E_DVASPECT);
    EXPECT_EQ(container.controlWindow(), nullptr);
    DeleteDC(device);
    DeleteObject(bitmap);

    const HDC metafile = CreateEnhMetaFileW(screen, nullptr, nullptr, nullptr);
    EXPECT_EQ(view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, metafile, &bounds, nullptr, nullptr, 0),
              S_OK);
    const HENHMETAFILE recorded = CloseEnhMetaFile(metafile);
    EXPECT_GT(GetEnhMetaFileBits(recorded, 0, nullptr), sizeof(ENHMETAHEADER) + 100);
    DeleteEnhMetaFile(recorded);
    ReleaseDC(nullptr, screen);
}

TEST_F(Embedded, TellsOfItsViewAndOfItsEnd) {
    Calls heard;
    const auto sink = windows::com::adopt(new AdviseSink(heard));
    DWORD stays = 0;
    DWORD leaves = 0;
    EXPECT_EQ(container.object->Unadvise(1), OLE_E_NOCONNECTION);
    EXPECT_EQ(container.object->Advise(sink.Get(), &stays), S_OK);
    EXPECT_EQ(container.object->Advise(sink.Get(), &leaves), S_OK);
    EXPECT_EQ(container.object->Unadvise(leaves), S_OK);
    ComPtr<IEnumSTATDATA> all;
    EXPECT_EQ(container.object->EnumAdvise(&all), S_OK);
    EXPECT_NE(all, nullptr);
    EXPECT_EQ(container.object->Close(OLECLOSE_NOSAVE), S_OK);
    EXPECT_EQ(heard, Calls{"OnClose"});
    EXPECT_EQ(container.object->Unadvise(stays), S_OK);

    heard.clear();
    const auto view = as<IViewObject>();
    ComPtr<IAdviseSink> kept;
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST, sink.Get()), S_OK);
    EXPECT_EQ(view->GetAdvise(nullptr, nullptr, &kept), S_OK);
    EXPECT_EQ(kept, sink);
    EXPECT_EQ(view->SetAdvise(DVASPECT_CONTENT, ADVF_PRIMEFIRST | ADVF_ONLYONCE, sink.Get()), S_OK);
    EXPECT_EQ(view->GetAdvise(nullptr, nullptr, &kept), S_OK);
    EXPECT_EQ(kept, nullptr);
    EXPECT_EQ(heard, (Calls{"OnViewChange", "OnViewChange"}));
}

TEST_F(Embedded, HasNothingToStoreAndSaysWhatItIs) {
    const auto storage = as<IPersistStreamInit>();
    ComPtr<IStream> stream;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    EXPECT_EQ(storage->InitNew(), S_OK);
    EXPECT_EQ(storage->Save(stream.Get(), TRUE), S_OK);
    STATSTG facts{};
    stream->Stat(&facts, STATFLAG_NONAME);
    EXPECT_EQ(facts.cbSize.QuadPart, 0U);
    EXPECT_EQ(storage->Load(stream.Get()), S_OK);
    EXPECT_EQ(storage->IsDirty(), S_FALSE);
    CLSID classId{};
    EXPECT_EQ(container.object->GetUserClassID(&classId), S_OK);
    EXPECT_EQ(classId, __uuidof(ucSendReceive));
    DWORD status = 0;
    EXPECT_EQ(container.object->GetMiscStatus(DVASPECT_CONTENT, &status), S_OK);
    EXPECT_NE(status & OLEMISC_ACTIVATEWHENVISIBLE, 0U);
    EXPECT_EQ(container.object->GetMiscStatus(DVASPECT_ICON, &status), S_OK);
    EXPECT_EQ(status, 0U);
    ULARGE_INTEGER size{};
    size.QuadPart = 1;
    EXPECT_EQ(storage->GetSizeMax(&size), S_OK);
    EXPECT_EQ(size.QuadPart, 0U);
    LOGPALETTE* palette = nullptr;
    EXPECT_EQ(as<IViewObject>()->GetColorSet(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, &palette), S_FALSE);
    ComPtr<IEnumOLEVERB> verbs;
    ComPtr<IMoniker> moniker;
    EXPECT_EQ(container.object->EnumVerbs(&verbs), OLEOBJ_E_NOVERBS);
    EXPECT_EQ(container.object->GetMoniker(OLEGETMONIKER_ONLYIFTHERE, OLEWHICHMK_OBJFULL, &moniker), E_NOTIMPL);
}

TEST_F(Embedded, AnswersWithOneIdentityToExactlyTheseInterfaces) {
    const auto unknown = identity();
    const IID offered[] = {IID_IOleObject,
                           IID_IOleWindow,
                           IID_IOleInPlaceObject,
                           IID_IOleInPlaceActiveObject,
                           IID_IOleControl,
                           IID_IViewObject,
                           IID_IPersist,
                           IID_IPersistStreamInit,
                           IID_IDispatch,
                           __uuidof(_ucSendReceive),
                           IID_IConnectionPointContainer,
                           IID_IProvideClassInfo2};
    for (const IID& iid : offered) {
        ComPtr<IUnknown> found;
        ComPtr<IUnknown> back;
        EXPECT_EQ(unknown->QueryInterface(iid, reinterpret_cast<void**>(found.GetAddressOf())), S_OK);
        EXPECT_EQ(found->QueryInterface(IID_PPV_ARGS(&back)), S_OK);
        EXPECT_EQ(back, unknown);
    }
    // Windowless activation, data transfer, property pages, stored properties, scripts' sites.
    const IID missing[] = {IID_IOleInPlaceObjectWindowless, IID_IDataObject,     IID_ISpecifyPropertyPages,
                           IID_IPersistPropertyBag,         IID_IObjectWithSite, IID_IPersistStorage};
    for (const IID& iid : missing) {
        ComPtr<IUnknown> found;
        EXPECT_EQ(unknown->QueryInterface(iid, reinterpret_cast<void**>(found.GetAddressOf())), E_NOINTERFACE);
    }
}

} // namespace
} // namespace container_test
