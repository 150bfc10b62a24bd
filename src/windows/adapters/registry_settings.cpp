#include "windows/adapters/registry_settings.h"

#include "base/runtime_error.h"
#include "windows/base/handles.h"
#include "windows/base/wide.h"

#include <optional>

#include <windows.h>

namespace windows {
namespace {

// An empty part between backslashes (or a whole empty name) names a key elsewhere in the tree, or none.
bool isKeyName(std::string_view name) {
    return !name.empty() && name.front() != '\\' && name.back() != '\\' && name.find("\\\\") == name.npos &&
           name.find('\0') == name.npos;
}

bool isUsable(std::string_view application, std::string_view section, std::string_view key) {
    return isKeyName(application) && isKeyName(section) && !key.empty() && key.find('\0') == key.npos;
}

std::wstring keyPath(std::string_view application, std::string_view section) {
    return L"Software\\VB and VBA Program Settings\\" + toWide(application) + L"\\" + toWide(section);
}

// Empty when the value is missing or cannot be read.
std::optional<std::wstring> read(HKEY key, const std::wstring& name) {
    DWORD type = 0;
    DWORD size = 0;
    LSTATUS status = RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &size);
    std::wstring text;
    while (status == ERROR_SUCCESS || status == ERROR_MORE_DATA) {
        if (type != REG_SZ) {
            return std::wstring();
        }
        text.resize(size / sizeof(wchar_t) + 1); // one more: a stored string need not end with its null
        size = static_cast<DWORD>(text.size() * sizeof(wchar_t));
        status = RegQueryValueExW(key, name.c_str(), nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
        if (status == ERROR_SUCCESS && type == REG_SZ) {
            text.resize(size / sizeof(wchar_t));
            return text.substr(0, text.find(L'\0'));
        }
    }
    return std::nullopt;
}

} // namespace

std::string RegistrySettings::get(std::string_view application, std::string_view section, std::string_view key,
                                  std::string_view fallback) {
    UniqueKey opened;
    if (isUsable(application, section, key) && RegOpenKeyExW(HKEY_CURRENT_USER, keyPath(application, section).c_str(),
                                                             0, KEY_QUERY_VALUE, opened.put()) == ERROR_SUCCESS) {
        if (const auto text = read(opened.get(), toWide(key))) {
            return fromWide(*text);
        }
    }
    return std::string(fallback);
}

void RegistrySettings::set(std::string_view application, std::string_view section, std::string_view key,
                           std::string_view value) {
    if (!isUsable(application, section, key)) {
        return;
    }
    UniqueKey created;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, keyPath(application, section).c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr,
                        created.put(), nullptr) != ERROR_SUCCESS) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    const std::wstring text = toWide(value.substr(0, value.find('\0')));
    if (RegSetValueExW(created.get(), toWide(key).c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                       static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) != ERROR_SUCCESS) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
}

void RegistrySettings::remove(std::string_view application, std::string_view section, std::string_view key) {
    UniqueKey opened;
    LSTATUS status = ERROR_FILE_NOT_FOUND;
    if (isUsable(application, section, key)) {
        status =
            RegOpenKeyExW(HKEY_CURRENT_USER, keyPath(application, section).c_str(), 0, KEY_SET_VALUE, opened.put());
    }
    if (status == ERROR_SUCCESS) {
        status = RegDeleteValueW(opened.get(), toWide(key).c_str());
    }
    if (status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND) {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
    if (status != ERROR_SUCCESS) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
}

} // namespace windows
