#include "windows/base/keep_loaded.h"

#include <windows.h>

namespace windows {

void keepCodeLoaded() noexcept {
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_PIN,
                       reinterpret_cast<LPCWSTR>(&keepCodeLoaded), &self);
}

} // namespace windows
