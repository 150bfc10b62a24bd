// The classes that hosts can create. The class factory and the registration both work from this one table.
#pragma once

#include <windows.h>

#include <unknwn.h>

#include <optional>
#include <span>

namespace windows::com {

struct CreatableClass {
    CLSID clsid;
    const wchar_t* progId;
    const wchar_t* description;
    // A new object with one reference, seen as `iid`.
    HRESULT (*create)(REFIID iid, void** object) noexcept;
    // What containers must know of a control (OLEMISC values); none: it is no control.
    std::optional<DWORD> miscStatus = std::nullopt;
};

[[nodiscard]] std::span<const CreatableClass> creatableClasses() noexcept;

// Null when this DLL has no such class.
[[nodiscard]] const CreatableClass* findClass(REFCLSID clsid) noexcept;

} // namespace windows::com
