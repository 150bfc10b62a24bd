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
    // Keys to remove once they are empty, innermost first: others may keep theirs there.
    std::vector<std::wstring> sharedKeys;
};

// For the DLL at `path` with this type library. Raises 51, 7.
[[nodiscard]] RegistryEntries registryEntries(const std::wstring& path, ITypeLib& library);

} // namespace windows::com
