#include "windows/base/module.h"

#include "base/runtime_error.h"
#include "windows/base/wide.h"

#include <atomic>

// Made by the linker: lies at the address where the module is loaded.
extern "C" IMAGE_DOS_HEADER __ImageBase; // NOLINT(readability-identifier-naming): its name there

namespace windows {
namespace {

constinit std::atomic<long> uses = 0;

} // namespace

HINSTANCE moduleHandle() noexcept {
    return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

std::wstring modulePath() {
    std::wstring path(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = GetModuleFileNameW(moduleHandle(), path.data(), static_cast<DWORD>(path.size()));
        if (length == 0) {
            throw base::RuntimeError(base::error::kInternalError);
        }
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(path.size() * 2);
    }
}

std::string moduleFolder() {
    const std::wstring path = modulePath();
    return fromWide(path.substr(0, path.find_last_of(L'\\')));
}

ModuleUse::ModuleUse() noexcept {
    lockModule();
}
ModuleUse::~ModuleUse() {
    unlockModule();
}

void lockModule() noexcept {
    ++uses;
}
void unlockModule() noexcept {
    --uses;
}

bool moduleInUse() noexcept {
    return uses != 0;
}

} // namespace windows
