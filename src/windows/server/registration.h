// Self-registration: for all users, or for this user where the rights for that are missing.
#pragma once

#include <windows.h>

namespace windows::com {

// Writes the classes and the type library. When access to the machine-wide keys is denied, and only then, the same keys
// go under this user's classes. SELFREG_E_CLASS or SELFREG_E_TYPELIB when it fails; nothing is left half-registered.
[[nodiscard]] HRESULT registerServer() noexcept;

// Removes everything that registerServer wrote in either place; S_OK too when there is nothing. SELFREG_E_CLASS when
// something is left because access to it is denied.
[[nodiscard]] HRESULT unregisterServer() noexcept;

} // namespace windows::com
