// The contract suites on the Windows adapters, and what only they can show.
#include "contracts/file_system_contract.h"
#include "contracts/picture_decoder_contract.h"
#include "contracts/scratch_folder.h"
#include "contracts/settings_contract.h"
#include "windows/adapters/handles.h"
#include "windows/adapters/registry_settings.h"
#include "windows/adapters/wic_picture_decoder.h"
#include "windows/adapters/wide.h"
#include "windows/adapters/windows_file_system.h"

#include <map>

#include <objbase.h>

namespace contracts {
namespace {

using windows::toWide;

class WindowsWorld final : public FileSystemWorld {
public:
    ports::FileSystem& files() override { return m_files; }
    std::string folder() override { return windows::fromWide(m_scratch.path().wstring()) + "\\"; }

    void setReadOnly(const std::string& path, bool readOnly) override {
        SetFileAttributesW(toWide(path).c_str(), readOnly ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
    }
    bool lock(const std::string& path) override {
        windows::UniqueHandle file(
            CreateFileW(toWide(path).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
        const bool locked = static_cast<bool>(file);
        m_locks[path] = std::move(file);
        return locked;
    }
    void unlock(const std::string& path) override { m_locks.erase(path); }
    bool fillDiskFor(const std::string& path) override;

private:
    ScratchFolder m_scratch;
    windows::WindowsFileSystem m_files{[](unsigned /*milliseconds*/) {}}; // locks in these tests do not go by waiting
    std::map<std::string, windows::UniqueHandle> m_locks;
};

// In Wine the next temporary file can be a link to the host system's device that is always full.
bool WindowsWorld::fillDiskFor(const std::string& path) {
    using ToUnixName = char*(CDECL*)(const WCHAR*);
    const auto address = GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");
    if (address == nullptr) {
        return false;
    }
    const auto toUnixName = reinterpret_cast<ToUnixName>(reinterpret_cast<void*>(address));
    const std::wstring link = toWide(path + ".tmp");
    char* name = toUnixName(link.c_str());
    std::wstring command = L"ln -s /dev/full \"" + toWide(name) + L"\"";
    HeapFree(GetProcessHeap(), 0, name);
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(L"Z:\\bin\\ln", command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &startup,
                        &process)) {
        return false;
    }
    for (const ULONGLONG end = GetTickCount64() + 5000; GetTickCount64() < end; SwitchToThread()) {
        if (GetFileAttributesW(link.c_str()) != INVALID_FILE_ATTRIBUTES) {
            return true;
        }
    }
    return false;
}

class ComApartment {
public:
    ComApartment() { (void)CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ComApartment(const ComApartment&) = delete;
    ComApartment& operator=(const ComApartment&) = delete;
    ~ComApartment() { CoUninitialize(); }
};

class WicWorld final : public PictureWorld {
public:
    ports::PictureDecoder& decoder() override { return m_decoder; }

private:
    ComApartment m_apartment;
    windows::WicPictureDecoder m_decoder;
};

// The registry, without what a test has left there.
class CleanRegistry final : public ports::Settings {
public:
    CleanRegistry() { wipe(); }
    ~CleanRegistry() override { wipe(); }
    std::string get(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view fallback) override {
        return m_store.get(application, section, key, fallback);
    }
    void set(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override {
        m_store.set(application, section, key, value);
    }
    void remove(std::string_view application, std::string_view section, std::string_view key) override {
        m_store.remove(application, section, key);
    }

private:
    static void wipe();
    windows::RegistrySettings m_store;
};

std::wstring testKey() {
    const std::string name = testing::UnitTest::GetInstance()->current_test_info()->name();
    return L"Software\\VB and VBA Program Settings\\QviContract " + toWide(name.substr(0, name.find('/')));
}

void CleanRegistry::wipe() {
    RegDeleteTreeW(HKEY_CURRENT_USER, testKey().c_str());
}

INSTANTIATE_TEST_SUITE_P(Windows, FileSystemContract, testing::Values([] { return std::make_unique<WindowsWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Windows, SettingsContract, testing::Values([] { return std::make_unique<CleanRegistry>(); }));
INSTANTIATE_TEST_SUITE_P(Windows, PictureDecoderContract, testing::Values([] { return std::make_unique<WicWorld>(); }));

} // namespace
} // namespace contracts
