// A host around an open form: calls from inside it, and letting go of the object meanwhile.
#include "windows/com/com_support.h"

#include "windows/com/quorvantisimage.h"

#include <gtest/gtest.h>

#include <string>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;

struct Observation {
    bool formSeen = false;
    HRESULT nested = S_OK;
    HRESULT canUnload = S_OK;
    std::wstring source;
    std::wstring description;
};

struct Host {
    LoadedDll dll;
    ComPtr<_clsQVI_Link> link = dll.create<_clsQVI_Link>(__uuidof(clsQVI_Link));
    Observation seen;
};

Host* host = nullptr;

std::wstring take(BSTR text) {
    std::wstring result(text, SysStringLen(text));
    SysFreeString(text);
    return result;
}

// The host's timer, which runs inside the form's own message loop.
void CALLBACK onTimer(HWND, UINT, UINT_PTR timer, DWORD) {
    HWND form = FindWindowW(L"QVI_frmQVI_Images", nullptr);
    if (form == nullptr || !IsWindowVisible(form) || host->seen.formSeen) {
        return;
    }
    KillTimer(nullptr, timer);
    host->seen.formSeen = true;
    DISPPARAMS none{};
    EXCEPINFO exception{};
    host->seen.nested = host->link->Invoke(9, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, &exception, nullptr);
    if (host->seen.nested == DISP_E_EXCEPTION) {
        host->seen.nested = exception.scode;
    }
    host->seen.source = take(exception.bstrSource);
    host->seen.description = take(exception.bstrDescription);
    host->link.Reset(); // its last reference, while its method runs
    host->seen.canUnload = host->dll.canUnloadNow();
    PostMessageW(form, WM_CLOSE, 0, 0);
}

TEST(ModalHost, ASecondFormIsRefusedAndAnOpenOneKeepsItsObjectAlive) {
    const ComApartment apartment;
    Host here;
    host = &here;
    BSTR folder = SysAllocString(L"Z:\\nowhere\\");
    here.link->put_gQuorVantisPath(folder);
    SysFreeString(folder);
    const UINT_PTR timer = SetTimer(nullptr, 0, 20, onTimer);
    const HRESULT outer = here.link->ShowForm();
    KillTimer(nullptr, timer);
    EXPECT_EQ(outer, S_OK);
    EXPECT_TRUE(here.seen.formSeen);
    EXPECT_EQ(here.seen.nested, static_cast<HRESULT>(0x800A0190));
    EXPECT_EQ(here.seen.source, L"QuorvantisImage");
    EXPECT_EQ(here.seen.description, L"Form already displayed; can't show modally");
    EXPECT_EQ(here.seen.canUnload, S_FALSE);
    EXPECT_EQ(here.dll.canUnloadNow(), S_OK);
    host = nullptr;
}

} // namespace
} // namespace com_test
