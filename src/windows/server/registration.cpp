#include "windows/server/registration.h"

#include "windows/base/module.h"
#include "windows/com/error_boundary.h"
#include "windows/com/type_library.h"
#include "windows/server/registry_entries.h"

#include <olectl.h>
#include <wrl/client.h>

#include <string>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

constexpr bool kIs64Bit = sizeof(void*) == 8;

// On 64-bit Windows, the half of the registry's classes that programs of the other bitness see.
constexpr REGSAM kOtherView = kIs64Bit ? KEY_WOW64_32KEY : KEY_WOW64_64KEY;

bool registryHasTwoViews() noexcept {
    BOOL on64Bit = FALSE;
    return kIs64Bit || (IsWow64Process(GetCurrentProcess(), &on64Bit) != FALSE && on64Bit != FALSE);
}

// One of the two places for classes. Not HKEY_CLASSES_ROOT: that name means either, depending on what is there.
class ClassesRoot {
public:
    explicit ClassesRoot(HKEY hive) noexcept : m_hive(hive) {}

    [[nodiscard]] LSTATUS write(const RegistryEntry& entry) const {
        HKEY key = nullptr;
        LSTATUS status = RegCreateKeyExW(m_hive, path(entry.key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE,
                                         KEY_SET_VALUE, nullptr, &key, nullptr);
        if (status == ERROR_SUCCESS) {
            const auto bytes = static_cast<DWORD>((entry.value.size() + 1) * sizeof(wchar_t));
            status =
                RegSetValueExW(key, entry.name, 0, REG_SZ, reinterpret_cast<const BYTE*>(entry.value.c_str()), bytes);
            RegCloseKey(key);
        }
        return status;
    }

    // The first failure; going on regardless. A key that is not there is no failure.
    [[nodiscard]] LSTATUS removeAll(const RegistryEntries& all) const {
        LSTATUS first = remove(all.ownedKeys);
        if (!otherBitnessHas(all)) {
            const LSTATUS status = remove(all.commonKeys);
            first = first == ERROR_SUCCESS ? status : first;
        }
        for (const std::wstring& key : all.sharedKeys) {
            removeIfEmpty(key);
        }
        return first;
    }

    // Whether the DLL of the other bitness is registered here.
    [[nodiscard]] bool otherBitnessHas(const RegistryEntries& all) const {
        HKEY key = nullptr;
        if (!registryHasTwoViews() || RegOpenKeyExW(m_hive, path(all.telltaleKey).c_str(), 0,
                                                    KEY_QUERY_VALUE | kOtherView, &key) != ERROR_SUCCESS) {
            return false;
        }
        RegCloseKey(key);
        return true;
    }

private:
    [[nodiscard]] static std::wstring path(const std::wstring& key) { return L"Software\\Classes\\" + key; }

    [[nodiscard]] LSTATUS remove(const std::vector<std::wstring>& keys) const {
        LSTATUS first = ERROR_SUCCESS;
        for (const std::wstring& key : keys) {
            const LSTATUS status = RegDeleteTreeW(m_hive, path(key).c_str());
            if (first == ERROR_SUCCESS && status != ERROR_FILE_NOT_FOUND) {
                first = status;
            }
        }
        return first;
    }

    void removeIfEmpty(const std::wstring& name) const {
        HKEY key = nullptr;
        if (RegOpenKeyExW(m_hive, path(name).c_str(), 0, KEY_QUERY_VALUE, &key) != ERROR_SUCCESS) {
            return;
        }
        DWORD subkeys = 0;
        DWORD values = 0;
        const LSTATUS status = RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &subkeys, nullptr, nullptr, &values,
                                                nullptr, nullptr, nullptr, nullptr);
        RegCloseKey(key);
        if (status == ERROR_SUCCESS && subkeys == 0 && values == 0) {
            RegDeleteKeyW(m_hive, path(name).c_str());
        }
    }

    HKEY m_hive;
};

const ClassesRoot kMachine{HKEY_LOCAL_MACHINE};
const ClassesRoot kUser{HKEY_CURRENT_USER};

struct Attempt {
    HRESULT result = S_OK;
    bool accessDenied = false;
};

Attempt writeAll(const ClassesRoot& root, const RegistryEntries& all) {
    for (const RegistryEntry& entry : all.entries) {
        const LSTATUS status = root.write(entry);
        if (status != ERROR_SUCCESS) {
            return {entry.part == RegistryPart::Classes ? SELFREG_E_CLASS : SELFREG_E_TYPELIB,
                    status == ERROR_ACCESS_DENIED};
        }
    }
    return {};
}

Attempt registerLibrary(const std::wstring& path, ITypeLib& library) {
    const HRESULT result = RegisterTypeLib(&library, const_cast<OLECHAR*>(path.c_str()), nullptr);
    if (SUCCEEDED(result)) {
        return {};
    }
    return {SELFREG_E_TYPELIB, result == TYPE_E_REGISTRYACCESS || result == E_ACCESSDENIED};
}

Attempt registerForAll(const RegistryEntries& all, const std::wstring& path, ITypeLib& library) {
    Attempt attempt = writeAll(kMachine, all);
    if (SUCCEEDED(attempt.result)) {
        attempt = registerLibrary(path, library); // knows what else this system wants, such as the other bitness
    }
    if (FAILED(attempt.result)) {
        static_cast<void>(kMachine.removeAll(all));
        return attempt;
    }
    static_cast<void>(kUser.removeAll(all)); // what an earlier fall-back left would take precedence
    return attempt;
}

Attempt registerForUser(const RegistryEntries& all) {
    const Attempt attempt = writeAll(kUser, all);
    if (FAILED(attempt.result)) {
        static_cast<void>(kUser.removeAll(all));
    }
    return attempt;
}

void unregisterLibrary(ITypeLib& library) {
    TLIBATTR* attributes = nullptr;
    if (SUCCEEDED(library.GetLibAttr(&attributes))) {
        // Fails when it is not registered; whatever it leaves, removeAll takes.
        static_cast<void>(UnRegisterTypeLib(attributes->guid, attributes->wMajorVerNum, attributes->wMinorVerNum,
                                            attributes->lcid, attributes->syskind));
        library.ReleaseTLibAttr(attributes);
    }
}

} // namespace

HRESULT registerServer() noexcept {
    ComPtr<ITypeLib> library;
    if (FAILED(loadTypeLibrary(library))) {
        return SELFREG_E_TYPELIB;
    }
    Attempt attempt;
    const HRESULT outcome = guarded(IID_NULL, [&] {
        const std::wstring path = modulePath();
        const RegistryEntries all = registryEntries(path, *library.Get());
        attempt = registerForAll(all, path, *library.Get());
        if (FAILED(attempt.result) && attempt.accessDenied) {
            attempt = registerForUser(all);
        }
    });
    return FAILED(outcome) ? outcome : attempt.result;
}

HRESULT unregisterServer() noexcept {
    ComPtr<ITypeLib> library;
    if (FAILED(loadTypeLibrary(library))) {
        return SELFREG_E_TYPELIB;
    }
    LSTATUS machine = ERROR_SUCCESS;
    LSTATUS user = ERROR_SUCCESS;
    const HRESULT outcome = guarded(IID_NULL, [&] {
        const RegistryEntries all = registryEntries(modulePath(), *library.Get());
        if (!kMachine.otherBitnessHas(all)) {
            unregisterLibrary(*library.Get()); // with the interfaces that it once wrote for the other bitness
        }
        machine = kMachine.removeAll(all);
        user = kUser.removeAll(all);
    });
    if (FAILED(outcome)) {
        return outcome;
    }
    return machine == ERROR_SUCCESS && user == ERROR_SUCCESS ? S_OK : SELFREG_E_CLASS;
}

} // namespace windows::com
