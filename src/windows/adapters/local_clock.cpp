#include "windows/adapters/local_clock.h"

#include <windows.h>

namespace windows {

base::DateTime LocalClock::now() {
    SYSTEMTIME time{};
    GetLocalTime(&time);
    return {time.wYear, time.wMonth, time.wDay, time.wHour, time.wMinute, time.wSecond};
}

} // namespace windows
