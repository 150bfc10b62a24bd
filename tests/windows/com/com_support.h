// Helpers of the automation tests: the freshly built DLL, its registration, COM for a thread, script hosts.
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <functional>
#include <string>
#include <string_view>
#include <thread>

namespace com_test {

// A file of this build, beside the test program.
[[nodiscard]] std::wstring besideThisProgram(std::wstring_view name);
[[nodiscard]] std::wstring dllPath();

// COM on this thread.
class ComApartment {
public:
    ComApartment() : m_result(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment() {
        if (SUCCEEDED(m_result)) {
            CoUninitialize();
        }
    }

private:
    HRESULT m_result;
};

// A text as automation wants it.
struct Text {
    BSTR value = nullptr;
    Text() = default;
    explicit Text(std::wstring_view text) : value(SysAllocStringLen(text.data(), static_cast<UINT>(text.size()))) {}
    Text(const Text&) = delete;
    Text& operator=(const Text&) = delete;
    ~Text() { SysFreeString(value); }
    [[nodiscard]] std::wstring str() const { return {value, SysStringLen(value)}; }
};

// The DLL in memory, called through its entry points as the system calls it.
class LoadedDll {
public:
    explicit LoadedDll(const std::wstring& path = dllPath());
    LoadedDll(const LoadedDll&) = delete;
    LoadedDll& operator=(const LoadedDll&) = delete;
    ~LoadedDll();

    [[nodiscard]] HRESULT canUnloadNow() const { return call("DllCanUnloadNow"); }
    HRESULT registerServer() const { return call("DllRegisterServer"); }
    HRESULT unregisterServer() const { return call("DllUnregisterServer"); }
    [[nodiscard]] HRESULT getClassObject(REFCLSID clsid, REFIID iid, void** object) const;
    // An object of the class without registration.
    template <typename Interface>
    [[nodiscard]] Microsoft::WRL::ComPtr<Interface> create(REFCLSID clsid) const {
        Microsoft::WRL::ComPtr<IClassFactory> factory;
        Microsoft::WRL::ComPtr<Interface> object;
        if (SUCCEEDED(getClassObject(clsid, IID_PPV_ARGS(&factory)))) {
            factory->CreateInstance(nullptr, IID_PPV_ARGS(&object));
        }
        return object;
    }

private:
    [[nodiscard]] HRESULT call(const char* entry) const;

    HMODULE m_module;
};

// The DLL registered for the time of a test.
class Registered {
public:
    Registered() { m_dll.registerServer(); }
    Registered(const Registered&) = delete;
    Registered& operator=(const Registered&) = delete;
    ~Registered() { m_dll.unregisterServer(); }

private:
    LoadedDll m_dll;
};

// Lets messages through until the thread posts WM_QUIT as its last deed: calls from it arrive as messages.
void pumpUntilEnd(std::thread& thread);

struct HostRun {
    DWORD exitCode = STILL_ACTIVE;
    std::string output; // line ends as LF
};

// What a test does every few milliseconds while a program runs; `process` is the program's id.
using Meanwhile = std::function<void(DWORD process)>;

// Runs a program, and `meanwhile` until it ends; one that does not end within a minute is killed.
[[nodiscard]] HostRun runProgram(std::wstring command, const Meanwhile& meanwhile = {});

// Runs a script beside this program in the system's console host.
[[nodiscard]] HostRun runScriptHost(std::wstring_view script, std::wstring_view arguments = {},
                                    const Meanwhile& meanwhile = {});

} // namespace com_test
