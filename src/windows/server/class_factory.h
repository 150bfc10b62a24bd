// Makes objects of one creatable class.
#pragma once

#include "windows/server/class_table.h"

#include <windows.h>

#include <unknwn.h>

namespace windows::com {

// A factory of the class, seen as `iid`. `creatable` outlives it (the table does). E_OUTOFMEMORY, E_NOINTERFACE.
[[nodiscard]] HRESULT createClassFactory(const CreatableClass& creatable, REFIID iid, void** factory) noexcept;

} // namespace windows::com
