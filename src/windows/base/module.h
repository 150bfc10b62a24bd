// What the DLL knows about itself: its handle, its path, and whether anything of it is still in use.
#pragma once

#include <windows.h>

#include <string>

namespace windows {

// The module that this code was linked into (the DLL, or a test program).
[[nodiscard]] HINSTANCE moduleHandle() noexcept;

// Its full path, of any length. Raises 51 when the system does not tell.
[[nodiscard]] std::wstring modulePath();
// The folder that it was loaded from, in UTF-8, without a final backslash. Raises as modulePath().
[[nodiscard]] std::string moduleFolder();

// Keeps the DLL in memory while it lives: every automation object holds one, every LockServer is one. A Show method
// runs inside an object that holds itself, so an open form counts too.
class ModuleUse {
public:
    ModuleUse() noexcept;
    ModuleUse(const ModuleUse&) = delete;
    ModuleUse& operator=(const ModuleUse&) = delete;
    ~ModuleUse();
};

// The two halves of a ModuleUse, for locks that a client counts.
void lockModule() noexcept;
void unlockModule() noexcept;

// True while anything above is alive.
[[nodiscard]] bool moduleInUse() noexcept;

} // namespace windows
