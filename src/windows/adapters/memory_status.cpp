#include "windows/adapters/memory_status.h"

#include <windows.h>

#include <algorithm>
#include <limits>

namespace windows {
namespace {

// A 64-bit program gets the whole figure; a 32-bit one what 32 bits can hold at most.
std::int32_t in32Bits(SIZE_T bytes) {
    return static_cast<std::int32_t>(std::min<SIZE_T>(bytes, std::numeric_limits<DWORD>::max()));
}

} // namespace

// The older function on purpose: its figures have 32 bits, as the log's readers know them.
ports::PageFile MemoryStatus::pageFile() {
    MEMORYSTATUS status{};
    status.dwLength = sizeof status;
    GlobalMemoryStatus(&status);
    return {in32Bits(status.dwTotalPageFile), in32Bits(status.dwAvailPageFile)};
}

} // namespace windows
