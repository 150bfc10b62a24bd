// The owner of WinInet's handles.
#pragma once

#include "windows/base/handles.h"

#include <wininet.h>

namespace windows {

namespace closing {
inline void internet(HINTERNET h) noexcept {
    InternetCloseHandle(h);
}
} // namespace closing

using UniqueInternet = UniqueResource<HINTERNET, closing::internet>; // sessions, connections, requests

} // namespace windows
