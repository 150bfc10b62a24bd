// A compiled host that hears the control's events. It binds late, so it needs nothing but the registered DLL.
//
//   event_host.exe
//
// Ends with the line END and exit code 0, or with the step that failed and exit code 1.
#include "late_bound.h"

#include <cstdio>

#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

using namespace late_bound;

namespace {

// The events by their numbers.
const char* const kEvents[] = {"",
                               "DownloadComplete",
                               "DownloadStart",
                               "Cancelled",
                               "SendReceiveCompleted",
                               "CloseQuorVantis",
                               "OpenfrmOptions",
                               "RegisterServer",
                               "UnregisterServer"};

// Prints what it hears. Lives on the stack, so it is not counted.
class Sink final : public IDispatch {
public:
    explicit Sink(REFIID events) : m_events(events) {}
    virtual ~Sink() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        const bool known = iid == IID_IUnknown || iid == IID_IDispatch || iid == m_events;
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }

    // An event. Its arguments come in reverse order; DownloadStart's first one, the command's name, is the last here.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        if (event < 1 || event >= static_cast<DISPID>(sizeof kEvents / sizeof kEvents[0])) {
            return DISP_E_MEMBERNOTFOUND; // not handled, which is no failure
        }
        std::printf("event %s with %u arguments\n", kEvents[event], arguments->cArgs);
        return S_OK;
    }

private:
    IID m_events;
};

// The control's window would be served here; this host has none and only lets waiting messages through.
void pump() {
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
}

bool run() {
    CLSID clsid{};
    Held<IDispatch> control;
    Held<IProvideClassInfo2> classInfo;
    Held<IConnectionPointContainer> container;
    Held<IConnectionPoint> point;
    IID events{};
    if (!done("Finding the class", CLSIDFromProgID(L"QuorvantisImage.ucSendReceive", &clsid)) ||
        !done("Creating it", CoCreateInstance(clsid, nullptr, CLSCTX_INPROC_SERVER, IID_IDispatch, control.out())) ||
        !done("Asking for its class", control->QueryInterface(IID_IProvideClassInfo2, classInfo.out())) ||
        !done("Asking for its events", classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events)) ||
        !done("Asking for connections", control->QueryInterface(IID_IConnectionPointContainer, container.out())) ||
        !done("Finding the connection point", container->FindConnectionPoint(events, &point.value))) {
        return false;
    }
    Sink sink(events);
    DWORD cookie = 0;
    if (!done("Connecting", point->Advise(&sink, &cookie))) {
        return false;
    }
    std::printf("connected\n");
    const bool ready =
        done("Setting the address", putText(control.value, L"sWebAddress", L"http://localhost/")) &&
        done("SetProgressBarMax", invoke(control.value, L"SetProgressBarMax", DISPATCH_METHOD, nullptr, nullptr));
    pump();
    return done("Disconnecting", point->Unadvise(cookie)) && ready;
}

} // namespace

int main() {
    CoInitialize(nullptr);
    const bool succeeded = run();
    CoUninitialize();
    if (succeeded) {
        std::printf("END\n");
    }
    return succeeded ? 0 : 1;
}
