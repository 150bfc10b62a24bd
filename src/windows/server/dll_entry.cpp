// The four entry points of an in-process server.
#include "windows/base/module.h"
#include "windows/server/class_factory.h"
#include "windows/server/class_table.h"
#include "windows/server/registration.h"
#include "windows/server/run_time_libraries.h"

#include <windows.h>

#include <olectl.h>

using namespace windows::com;

// Loading does nothing.
extern "C" BOOL WINAPI DllMain(HINSTANCE, DWORD reason, LPVOID processEnds) {
    if (reason == DLL_PROCESS_DETACH && processEnds == nullptr) {
        letRunTimeLibrariesGo();
    }
    return TRUE;
}

STDAPI DllCanUnloadNow() {
    return windows::moduleInUse() ? S_FALSE : S_OK;
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
