// What must not stay when a host has had enough: of the DLL, of its objects, of its forms.
#include "contracts/scratch_folder.h"
#include "windows/com/com_support.h"
#include "windows/com/form_closer.h"
#include "windows/com/live_objects.h"

#include "windows/com/quorvantisimage.h"

#include <gtest/gtest.h>
#include <ocidl.h>

#include <fstream>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;

void expectNothingLost(const LiveObjects& before) {
    const LiveObjects now = liveObjects();
    EXPECT_EQ(now.kernelHandles, before.kernelHandles);
    EXPECT_EQ(now.gdiObjects, before.gdiObjects);
    EXPECT_EQ(now.windows, before.windows);
    EXPECT_EQ(now.freeThreadSlots, before.freeThreadSlots);
}

TEST(Leaks, AreSeen) {
    EXPECT_TRUE(twentyLostObjectsShow());
}

TEST(DllLifetime, LoadsAndUnloadsManyTimesWithoutLeavingAnything) {
    // A copy of its own: the system keeps the other one loaded once it has marshalled through its type library.
    const contracts::ScratchFolder folder;
    const std::wstring copy = folder.path().wstring() + L"\\Copy.dll";
    ASSERT_TRUE(CopyFileW(dllPath().c_str(), copy.c_str(), TRUE));
    const auto useOnce = [&] {
        const ComApartment apartment;
        const LoadedDll dll(copy);
        auto link = dll.create<_clsQVI_Link>(__uuidof(clsQVI_Link));
        LPOLESTR name = const_cast<LPOLESTR>(L"ProductCode");
        DISPID id = 0;
        EXPECT_EQ(link->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), S_OK); // opens the type library
        EXPECT_EQ(link->put_ProductCode(Text(L"4711").value), S_OK);
        link.Reset();
        auto control = dll.create<_ucSendReceive>(__uuidof(ucSendReceive));
        ComPtr<IConnectionPointContainer> events;
        ComPtr<IConnectionPoint> point;
        EXPECT_EQ(control.As(&events), S_OK);
        EXPECT_EQ(events->FindConnectionPoint(__uuidof(__ucSendReceive), &point), S_OK);
        events.Reset();
        control.Reset();
        EXPECT_EQ(dll.canUnloadNow(), S_FALSE) << "its connection point is still used";
        point.Reset();
        EXPECT_EQ(dll.canUnloadNow(), S_OK);
        auto cabinet = dll.create<_clsCABFile>(__uuidof(clsCABFile));
        LONG count = 0;
        EXPECT_EQ(cabinet->put_CabName(Text(L"Z:\\no such cabinet").value), S_OK);
        EXPECT_NE(cabinet->get_FileCount(&count), S_OK); // the reader stays in the callback's slot
        cabinet.Reset();
        EXPECT_EQ(dll.canUnloadNow(), S_OK);
    };
    const HMODULE kept = LoadLibraryW(L"comdlg32.dll"); // Wine's loses a handle each time that it is loaded
    useOnce();
    useOnce();
    const LiveObjects before = liveObjects();
    for (int i = 0; i < 20; ++i) {
        useOnce();
        ASSERT_EQ(GetModuleHandleW(L"Copy.dll"), nullptr) << "run " << i;
    }
    expectNothingLost(before);
    FreeLibrary(kept);
}

TEST(FormLifetime, ShowingFormsManyTimesLeavesNothing) {
    const ComApartment apartment;
    const LoadedDll dll;
    const contracts::ScratchFolder shop;
    std::ofstream(shop.path() / "images.xml") << "<images><p f1='GEAR-20' f2='no such.jpg' f3='created'/></images>";
    const auto link = dll.create<_clsQVI_Link>(__uuidof(clsQVI_Link));
    link->put_gQuorVantisPath(Text(shop.path().wstring() + L"\\").value);
    link->put_ProductCode(Text(L"GEAR-20").value);
    const FormCloser closer;
    const auto showForms = [&](int rounds) {
        for (int i = 0; i < rounds; ++i) {
            ASSERT_EQ(link->ShowForm(), S_OK);
            ASSERT_EQ(link->ShowFormSendReceive(), S_OK);
        }
    };
    showForms(3);
    const LiveObjects before = liveObjects();
    showForms(25);
    expectNothingLost(before);
}

} // namespace
} // namespace com_test
