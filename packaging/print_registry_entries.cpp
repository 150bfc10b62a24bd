// Prints what the DLL's registration writes, so that installers can be made of the same table:
//
//   print_registry_entries.exe LIBRARY FILE
//
// LIBRARY has the type library; FILE stands for the installed DLL's path. One value in a line: the key below the
// classes root, the value's name (empty: the key's default value) and the text, with tabs between them.
#include "windows/server/registry_entries.h"

#include <wrl/client.h>

#include <cstdio>
#include <exception>

int wmain(int argc, wchar_t** argv) {
    if (argc != 3) {
        std::fputs("usage: print_registry_entries LIBRARY FILE\n", stderr);
        return 2;
    }
    Microsoft::WRL::ComPtr<ITypeLib> library;
    if (FAILED(LoadTypeLibEx(argv[1], REGKIND_NONE, &library))) {
        std::fprintf(stderr, "print_registry_entries: %ls has no type library\n", argv[1]);
        return 1;
    }
    try {
        for (const auto& entry : windows::com::registryEntries(argv[2], *library.Get()).entries) {
            std::printf("%ls\t%ls\t%ls\n", entry.key.c_str(), entry.name != nullptr ? entry.name : L"",
                        entry.value.c_str());
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "print_registry_entries: %s\n", error.what());
        return 1;
    }
    return 0;
}
