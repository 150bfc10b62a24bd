#include "windows/adapters/user_data_protection.h"

#include "base/runtime_error.h"
#include "windows/base/handles.h"

#include <windows.h>

#include <dpapi.h>

namespace windows {
namespace {

// The functions take what they only read through pointers to changeable data.
DATA_BLOB blobOf(std::string_view bytes) noexcept {
    return {static_cast<DWORD>(bytes.size()), reinterpret_cast<BYTE*>(const_cast<char*>(bytes.data()))};
}

// Copies out what a function has allocated, and frees it.
std::string take(const DATA_BLOB& blob) {
    const UniqueLocal owner(blob.pbData);
    return {reinterpret_cast<const char*>(blob.pbData), blob.cbData};
}

void raiseIfOutOfMemory() {
    if (GetLastError() == ERROR_NOT_ENOUGH_MEMORY || GetLastError() == ERROR_OUTOFMEMORY) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
}

} // namespace

std::string UserDataProtection::protect(std::string_view plain, std::string_view key) {
    DATA_BLOB input = blobOf(plain);
    DATA_BLOB entropy = blobOf(key);
    DATA_BLOB output{};
    if (CryptProtectData(&input, nullptr, &entropy, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &output) == FALSE) {
        raiseIfOutOfMemory();
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    return take(output);
}

std::optional<std::string> UserDataProtection::unprotect(std::string_view bytes, std::string_view key) {
    DATA_BLOB input = blobOf(bytes);
    DATA_BLOB entropy = blobOf(key);
    DATA_BLOB output{};
    if (CryptUnprotectData(&input, nullptr, &entropy, nullptr, nullptr, CRYPTPROTECT_UI_FORBIDDEN, &output) == FALSE) {
        raiseIfOutOfMemory();
        return std::nullopt;
    }
    return take(output);
}

} // namespace windows
