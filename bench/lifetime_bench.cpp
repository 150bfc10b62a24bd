// What a host pays for coming and going, and whether anything stays: the DLL loaded, an object made and let go, the DLL
// unloaded, again and again; forms shown and closed, again and again.
//
//   lifetime_bench.exe FOLDER [LOADS [FORMS]]
//
// Needs the registered DLL; FOLDER, with its final backslash, has the links of GEAR-20. bench/lifetime_in_wine sees to
// both.
#include "measure.h"

#include "windows/com/com_support.h"
#include "windows/com/form_closer.h"
#include "windows/com/host_thread.h"
#include "windows/com/live_objects.h"

#include "windows/com/quorvantisimage.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <utility>

namespace {

using Microsoft::WRL::ComPtr;

constexpr wchar_t kOurs[] = L"QuorvantisImage.clsQVI_Link";
constexpr wchar_t kOurControl[] = L"QuorvantisImage.ucSendReceive";
constexpr wchar_t kDll[] = L"QuorvantisImage.dll";

void require(const char* what, HRESULT result) {
    if (FAILED(result)) {
        std::fprintf(stderr, "%s failed: %08lX\n", what, static_cast<unsigned long>(result));
        std::exit(1);
    }
}

void show(const char* what, int rounds) {
    const com_test::LiveObjects live = com_test::liveObjects();
    std::printf("  after %5d %s: resident %ld KB, %d blocks of memory, %d kernel handles, %d GDI objects, %d windows, "
                "free slots "
                "of threads %d, of fibers %d\n",
                rounds, what, bench::residentKb(), live.memoryBlocks, live.kernelHandles, live.gdiObjects, live.windows,
                live.freeThreadSlots, live.freeFiberSlots);
}

ComPtr<IDispatch> createObject(const wchar_t* progId) {
    CLSID clsid;
    ComPtr<IDispatch> object;
    require("CLSIDFromProgID", CLSIDFromProgID(progId, &clsid));
    require("CoCreateInstance", CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)));
    return object;
}

// A host that does nothing else: COM goes with it, and takes the unused DLL along.
void comeAndGo(const wchar_t* progId) {
    const com_test::ComApartment apartment;
    createObject(progId);
}

std::wstring registeredPath() {
    const com_test::ComApartment apartment;
    const ComPtr<IDispatch> keepsItLoaded = createObject(kOurs);
    std::wstring path(MAX_PATH, L'\0');
    path.resize(GetModuleFileNameW(GetModuleHandleW(kDll), path.data(), MAX_PATH));
    return path;
}

class Contestant {
public:
    Contestant(const char* name, int atATime, std::function<void()> once)
        : m_name(name), m_atATime(atATime), m_once(std::move(once)) {}

    void takeTurn() {
        m_seconds += bench::seconds([&] {
            for (int i = 0; i < m_atATime; ++i) {
                m_once();
            }
        });
        m_rounds += m_atATime;
    }
    [[nodiscard]] int rounds() const { return m_rounds; }
    void report() const { std::printf("%s: %.3f ms\n", m_name, m_seconds * 1e3 / m_rounds); }

private:
    const char* m_name;
    int m_atATime;
    std::function<void()> m_once;
    double m_seconds = 0;
    int m_rounds = 0;
};

// In turn, so that all of them have the same machine.
void measureLoads(int rounds) {
    const std::wstring path = registeredPath();
    Contestant contestants[] = {
        {"load, create, release, unload", 100,
         [] {
             comeAndGo(kOurs);
             require("Unloading", GetModuleHandleW(kDll) == nullptr ? S_OK : E_FAIL);
         }},
        {"the same with Scripting.Dictionary", 100, [] { comeAndGo(L"Scripting.Dictionary"); }},
        {"LoadLibrary and FreeLibrary of our DLL alone", 10, [&] { FreeLibrary(LoadLibraryW(path.c_str())); }},
    };
    const Contestant& ours = contestants[0];
    while (ours.rounds() < rounds) {
        std::ranges::for_each(contestants, &Contestant::takeTurn);
    }
    std::ranges::for_each(contestants, &Contestant::report);
    const com_test::ComApartment apartment;
    const ComPtr<IDispatch> keepsItLoaded = createObject(kOurs);
    Contestant loaded("create and release while the DLL is loaded", rounds, [] { createObject(kOurs); });
    loaded.takeTurn();
    loaded.report();
}

// A document that is none, so that there is an error too.
void useOurs() {
    const com_test::ComApartment apartment;
    ComPtr<_ucSendReceive> control;
    ComPtr<IDispatch> commands;
    ComPtr<_XmlDocument> document;
    VARIANT_BOOL loaded = VARIANT_FALSE;
    require("QueryInterface", createObject(kOurControl).As(&control));
    require("domCommands", control->get_domCommands(&commands));
    require("QueryInterface", commands.As(&document));
    require("loadXML", document->loadXML(com_test::Text(L"<no end").value, &loaded));
}

// Keeps loaded what ours needs of the system: only ours comes and goes then, and what Wine's lose does not count.
void keepSystemDlls(const std::wstring& path) {
    const HMODULE ours = LoadLibraryW(path.c_str());
    std::array<HMODULE, 1024> modules{};
    DWORD size = 0;
    K32EnumProcessModules(GetCurrentProcess(), modules.data(), sizeof modules, &size);
    for (const HMODULE module :
         std::span(modules).first(std::min<std::size_t>(modules.size(), size / sizeof(HMODULE)))) {
        HMODULE kept = nullptr;
        if (module != ours) {
            GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS, reinterpret_cast<LPCWSTR>(module), &kept);
        }
    }
    FreeLibrary(ours);
}

void countWhatStays(int rounds) {
    keepSystemDlls(registeredPath());
    struct User {
        const char* name;
        void (*loadUseUnload)();
    };
    const User users[] = {
        {"loads for the thread that loads",
         [] {
             const com_test::ComApartment apartment;
             useOurs();
         }},
        {"loads for a thread that ends before the unloading",
         [] {
             const com_test::ComApartment apartment;
             const com_test::HostThread user(useOurs);
         }},
        {"loads for a thread that ends after the unloading",
         [] {
             std::optional<com_test::ComApartment> apartment(std::in_place);
             const com_test::HostThread user(useOurs);
             apartment.reset();
         }},
    };
    for (const User& user : users) {
        for (int done = 1; done <= rounds; ++done) {
            user.loadUseUnload();
            require("Unloading", GetModuleHandleW(kDll) == nullptr ? S_OK : E_FAIL);
            if (done == rounds / 10 || done == rounds) {
                show(user.name, done);
            }
        }
    }
}

void measureForms(const wchar_t* folder, int rounds) {
    const com_test::ComApartment apartment;
    ComPtr<_clsQVI_Link> link;
    require("QueryInterface", createObject(kOurs).As(&link));
    link->put_gQuorVantisPath(com_test::Text(folder).value);
    link->put_ProductCode(com_test::Text(L"GEAR-20").value);
    const com_test::FormCloser closer;
    const auto measure = [&](const char* what, HRESULT (STDMETHODCALLTYPE _clsQVI_Link::*showForm)()) {
        const double time = bench::seconds([&] {
            for (int done = 1; done <= rounds; ++done) {
                require(what, (link.Get()->*showForm)());
                if (done == rounds / 10 || done == rounds) {
                    show(what, done);
                }
            }
        });
        std::printf("%s and close: %.1f ms\n", what, time * 1e3 / rounds);
    };
    measure("ShowForm", &_clsQVI_Link::ShowForm);
    measure("ShowFormSendReceive", &_clsQVI_Link::ShowFormSendReceive);
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    std::setvbuf(stdout, nullptr, _IONBF, 0); // what a time limit cuts off is not lost
    if (count < 2) {
        std::fputs("usage: lifetime_bench FOLDER [LOADS [FORMS]]\n", stderr);
        return 2;
    }
    require("Seeing twenty lost objects", com_test::twentyLostObjectsShow() ? S_OK : E_FAIL);
    std::puts("twenty events, brushes, windows, slots and blocks of memory lost on purpose are counted");
    const HMODULE kept = LoadLibraryW(L"comdlg32.dll"); // Wine's loses a handle each time that it is loaded
    const int loads = count > 2 ? _wtoi(arguments[2]) : 10'000;
    measureLoads(loads / 10);
    countWhatStays(loads);
    measureForms(arguments[1], count > 3 ? _wtoi(arguments[3]) : 1'000);
    FreeLibrary(kept);
    return 0;
}
