#include "windows/adapters/memory_status.h"

#include <windows.h>

namespace windows {

// The older function on purpose: its figures have 32 bits, as the log's readers know them.
ports::PageFile MemoryStatus::pageFile() {
    MEMORYSTATUS status{};
    status.dwLength = sizeof status;
    GlobalMemoryStatus(&status);
    return {static_cast<std::int32_t>(status.dwTotalPageFile), static_cast<std::int32_t>(status.dwAvailPageFile)};
}

} // namespace windows
