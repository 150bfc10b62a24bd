// A compiled host that hears the control's events. It binds late, so it needs nothing but the registered DLL.
//
//   event_host.exe
//
// Ends with the line END and exit code 0, or with the step that failed and exit code 1.
#include "host_support.h"

#include <cstdio>

#include <windows.h>

#include <ocidl.h>
#include <oleauto.h>

using namespace host;

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

// Prints what it hears.
class Sink final : public StackObject {
public:
    using StackObject::StackObject;

    // An event. Its arguments come in reverse order; DownloadStart's first one, the command's name, is the last here.
    HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        if (event < 1 || event >= static_cast<DISPID>(sizeof kEvents / sizeof kEvents[0])) {
            return DISP_E_MEMBERNOTFOUND; // not handled, which is no failure
        }
        std::printf("event %s with %u arguments\n", kEvents[event], arguments->cArgs);
        return S_OK;
    }
};

// A method with at most one argument, or a property, by its name.
HRESULT invoke(IDispatch* object, const wchar_t* member, WORD flags, VARIANT* argument) {
    LPOLESTR name = const_cast<LPOLESTR>(member);
    DISPID id = 0;
    const HRESULT found = object->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(found)) {
        return found;
    }
    DISPID putId = DISPID_PROPERTYPUT;
    const bool isPut = (flags & DISPATCH_PROPERTYPUT) != 0;
    DISPPARAMS arguments{argument, isPut ? &putId : nullptr, argument != nullptr ? 1U : 0U, isPut ? 1U : 0U};
    return object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &arguments, nullptr, nullptr, nullptr);
}

HRESULT putText(IDispatch* object, const wchar_t* property, const wchar_t* text) {
    const Text held(text);
    VARIANT value;
    V_VT(&value) = VT_BSTR;
    V_BSTR(&value) = held.value;
    return invoke(object, property, DISPATCH_PROPERTYPUT, &value);
}

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
    const bool ready = done("Setting the address", putText(control.value, L"sWebAddress", L"http://localhost/")) &&
                       done("SetProgressBarMax", invoke(control.value, L"SetProgressBarMax", DISPATCH_METHOD, nullptr));
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
