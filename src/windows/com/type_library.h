// The type library inside this DLL: what automation calls are served from, registered or not.
#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

namespace windows::com {

// Loads the library without registering it.
[[nodiscard]] HRESULT loadTypeLibrary(Microsoft::WRL::ComPtr<ITypeLib>& library) noexcept;

// The description of one dual interface in it.
[[nodiscard]] HRESULT loadTypeInfo(REFIID iid, Microsoft::WRL::ComPtr<ITypeInfo>& info) noexcept;

} // namespace windows::com
