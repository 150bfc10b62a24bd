// What must not stay when a host has had enough: of the DLL, of its objects, of its forms.
#include "contracts/scratch_folder.h"
#include "windows/com/com_support.h"
#include "windows/com/form_closer.h"
#include "windows/com/host_thread.h"
#include "windows/com/live_objects.h"

#include "windows/com/quorvantisimage.h"

#include <gtest/gtest.h>
#include <ocidl.h>

#include <fstream>
#include <optional>
#include <string>

namespace com_test {
namespace {

using Microsoft::WRL::ComPtr;

void expectNothingLost(const LiveObjects& before) {
    const LiveObjects now = liveObjects();
    EXPECT_EQ(now.kernelHandles, before.kernelHandles);
    EXPECT_EQ(now.gdiObjects, before.gdiObjects);
    EXPECT_EQ(now.windows, before.windows);
    EXPECT_EQ(now.freeThreadSlots, before.freeThreadSlots);
    EXPECT_EQ(now.freeFiberSlots, before.freeFiberSlots);
}

TEST(Leaks, AreSeen) {
    EXPECT_TRUE(twentyLostObjectsShow());
}

// Something of each kind: a text, the type library, a document, a connection point, an error.
void use(const LoadedDll& dll) {
    const ComApartment apartment;
    auto link = dll.create<_clsQVI_Link>(__uuidof(clsQVI_Link));
    LPOLESTR name = const_cast<LPOLESTR>(L"ProductCode");
    DISPID id = 0;
    EXPECT_EQ(link->GetIDsOfNames(IID_NULL, &name, 1, 0, &id), S_OK); // opens the type library
    EXPECT_EQ(link->put_ProductCode(Text(L"4711").value), S_OK);
    link.Reset();
    auto control = dll.create<_ucSendReceive>(__uuidof(ucSendReceive));
    ComPtr<IDispatch> commands;
    ComPtr<_XmlDocument> document;
    VARIANT_BOOL loaded = VARIANT_TRUE;
    EXPECT_EQ(control->get_domCommands(&commands), S_OK);
    EXPECT_EQ(commands.As(&document), S_OK);
    EXPECT_EQ(document->loadXML(Text(L"<no end").value, &loaded), S_OK);
    EXPECT_EQ(loaded, VARIANT_FALSE); // the XML library keeps the thread's last error
    document.Reset();
    commands.Reset();
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
}

struct User {
    const char* name;
    void (*loadUseUnload)(const std::wstring& copy);
};
constexpr User kUsers[] = {
    {"the thread that loads", [](const std::wstring& copy) { use(LoadedDll(copy)); }},
    {"another thread, which ends before the unloading",
     [](const std::wstring& copy) {
         const LoadedDll dll(copy);
         const HostThread user([&] { use(dll); });
     }},
    {"another thread, which ends after the unloading",
     [](const std::wstring& copy) {
         std::optional<LoadedDll> dll(copy);
         const HostThread user([&] { use(*dll); });
         dll.reset();
     }},
};

TEST(DllLifetime, LoadsAndUnloadsManyTimesWithoutLeavingAnything) {
    // A copy of its own: the system keeps the other one loaded once it has marshalled through its type library.
    const contracts::ScratchFolder folder;
    const std::wstring copy = folder.path().wstring() + L"\\Copy.dll";
    ASSERT_TRUE(CopyFileW(dllPath().c_str(), copy.c_str(), TRUE));
    const HMODULE kept = LoadLibraryW(L"comdlg32.dll"); // Wine's loses a handle each time that it is loaded
    constexpr int kRounds = 20;
    for (const User& user : kUsers) {
        SCOPED_TRACE(user.name);
        const ComApartment apartment; // the system's own DLLs stay loaded
        user.loadUseUnload(copy);
        user.loadUseUnload(copy);
        const LiveObjects before = liveObjects();
        for (int i = 0; i < kRounds; ++i) {
            user.loadUseUnload(copy);
            ASSERT_EQ(GetModuleHandleW(L"Copy.dll"), nullptr) << "run " << i;
        }
        expectNothingLost(before);
        EXPECT_LT(liveObjects().memoryBlocks, before.memoryBlocks + kRounds) << "a block of memory each time";
    }
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
