// Registers the freshly built DLL, which lies beside this program, then runs the tests.
#include <windows.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <string>

namespace {

bool registerComponent() {
    std::array<wchar_t, MAX_PATH> program{};
    GetModuleFileNameW(nullptr, program.data(), MAX_PATH);
    const std::wstring path = program.data();
    const std::wstring dll = path.substr(0, path.find_last_of(L'\\') + 1) + L"QuorvantisImage.dll";
    const HMODULE module = LoadLibraryW(dll.c_str());
    if (module == nullptr) {
        return false;
    }
    using Entry = HRESULT(STDAPICALLTYPE*)();
    const auto entry = reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, "DllRegisterServer")));
    const bool registered = entry != nullptr && SUCCEEDED(entry());
    FreeLibrary(module);
    return registered;
}

} // namespace

int main(int count, char** arguments) {
    testing::InitGoogleTest(&count, arguments);
    if (!registerComponent()) {
        std::fputs("QuorvantisImage.dll beside this program cannot be registered\n", stderr);
        return 1;
    }
    return RUN_ALL_TESTS();
}
