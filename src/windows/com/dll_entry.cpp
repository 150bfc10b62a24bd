// The four entry points of an in-process server.
#include "windows/com/class_factory.h"
#include "windows/com/class_table.h"
#include "windows/com/module.h"
#include "windows/com/registration.h"

#include <windows.h>

#include <olectl.h>

using namespace windows::com;

// The thread library's own callback for starting and ending threads.
extern "C" const PIMAGE_TLS_CALLBACK __xl_f; // NOLINT(readability-identifier-naming): its name there

// Loading does nothing. On unloading, the thread library keeps the handles that it made for the threads still running;
// to it the unloading thread ends here, or a host that loads and unloads the DLL would lose some each time.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) {
        __xl_f(module, DLL_THREAD_DETACH, nullptr);
    }
    return TRUE;
}

STDAPI DllCanUnloadNow() {
    return moduleInUse() ? S_FALSE : S_OK;
}

STDAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** object) {
    if (object == nullptr) {
        return E_POINTER;
    }
    *object = nullptr;
    const CreatableClass* creatable = findClass(clsid);
    return creatable == nullptr ? CLASS_E_CLASSNOTAVAILABLE : createClassFactory(*creatable, iid, object);
}

STDAPI DllRegisterServer() {
    return registerServer();
}

STDAPI DllUnregisterServer() {
    return unregisterServer();
}
