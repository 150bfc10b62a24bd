// The table of what this DLL writes into the registry, the same for all users and for one user.
#pragma once

#include <windows.h>

#include <oleauto.h>

#include <cstdint>
#include <string>
#include <vector>

namespace windows::com {

enum class RegistryPart : std::uint8_t { Classes, TypeLibrary };

// One string value. Keys are relative to the classes root of a hive.
struct RegistryEntry {
    RegistryPart part;
    std::wstring key;
    const wchar_t* name; // null: the key's default value
    std::wstring value;
};

struct RegistryEntries {
    std::vector<RegistryEntry> entries;
    // The keys that are ours with everything below them.
    std::vector<std::wstring> ownedKeys;
    // The same where 64-bit Windows has one place for the DLL of either bitness: ours while the other is not
    // registered.
    std::vector<std::wstring> commonKeys;
    // One of the owned keys, which 64-bit Windows keeps apart: it tells whether a DLL is registered.
    std::wstring telltaleKey;
    // Keys to remove once they are empty, innermost first: others may keep theirs there.
    std::vector<std::wstring> sharedKeys;
};

// For the DLL at `path` with this type library. Raises 51, 7.
[[nodiscard]] RegistryEntries registryEntries(const std::wstring& path, ITypeLib& library);

} // namespace windows::com
