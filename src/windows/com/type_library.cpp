#include "windows/com/type_library.h"

#include "windows/base/module.h"
#include "windows/com/error_boundary.h"

namespace windows::com {

using Microsoft::WRL::ComPtr;

HRESULT loadTypeLibrary(ComPtr<ITypeLib>& library) noexcept {
    HRESULT result = S_OK;
    const HRESULT outcome = guarded(IID_IUnknown, [&] {
        result = LoadTypeLibEx(modulePath().c_str(), REGKIND_NONE, library.ReleaseAndGetAddressOf());
    });
    return FAILED(outcome) ? outcome : result;
}

HRESULT loadTypeInfo(REFIID iid, ComPtr<ITypeInfo>& info) noexcept {
    ComPtr<ITypeLib> library;
    const HRESULT result = loadTypeLibrary(library);
    return FAILED(result) ? result : library->GetTypeInfoOfGuid(iid, info.ReleaseAndGetAddressOf());
}

} // namespace windows::com
