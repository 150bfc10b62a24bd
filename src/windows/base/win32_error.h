// The one table from Win32 error codes to the component's run-time error numbers.
#pragma once

#include <cstdint>

namespace windows {

enum class Attempt {
    kUseFile,    // opening, reading, writing, moving, deleting
    kMakeFolder, // "not found" is then always the parent folder
};

// The run-time error number for a Win32 error code: 53 not there, 76 folder, drive or network path not there, 52 name
// not allowed, 71 drive not ready, 70 locked or write-protected, 61 disk full, 7 out of memory, 75 anything else.
[[nodiscard]] std::int32_t runtimeErrorNumber(std::uint32_t win32Error, Attempt attempt = Attempt::kUseFile) noexcept;

// Raises the base::RuntimeError of that number.
[[noreturn]] void raise(std::uint32_t win32Error, Attempt attempt = Attempt::kUseFile);

// Raises for GetLastError(); call it before anything else can change that value.
[[noreturn]] void raiseLastError(Attempt attempt = Attempt::kUseFile);

} // namespace windows
