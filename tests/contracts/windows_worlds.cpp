// The contract suites on the Windows adapters, and what only they can show.
#include "contracts/data_protection_contract.h"
#include "contracts/file_system_contract.h"
#include "contracts/locale_contract.h"
#include "contracts/picture_decoder_contract.h"
#include "contracts/scratch_folder.h"
#include "contracts/settings_contract.h"
#include "windows/adapters/registry_settings.h"
#include "windows/adapters/user_data_protection.h"
#include "windows/adapters/user_locale.h"
#include "windows/adapters/wic_picture_decoder.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/base/handles.h"
#include "windows/base/wide.h"

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
    void freeDiskFor(const std::string& path) override;

private:
    ScratchFolder m_scratch;
    windows::WindowsFileSystem m_files{[](unsigned /*milliseconds*/) {}}; // locks in these tests do not go by waiting
    std::map<std::string, windows::UniqueHandle> m_locks;
};

// Wine's name of a file in the host system; empty on Windows.
std::wstring hostName(const std::wstring& path) {
    using ToHostName = char*(CDECL*)(const WCHAR*);
    const auto address = GetProcAddress(GetModuleHandleW(L"kernel32"), "wine_get_unix_file_name");
    if (address == nullptr) {
        return {};
    }
    char* name = reinterpret_cast<ToHostName>(reinterpret_cast<void*>(address))(path.c_str());
    std::wstring result = toWide(name);
    HeapFree(GetProcessHeap(), 0, name);
    return result;
}

bool isListed(const std::wstring& path) {
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW(path.c_str(), &found);
    return search != INVALID_HANDLE_VALUE && FindClose(search);
}

// Runs a program of Wine's host system on `path`, until the path is there or gone; there is no handle to wait for.
bool runHostProgram(const std::wstring& program, const std::wstring& arguments, const std::wstring& path, bool there) {
    const std::wstring name = hostName(path);
    std::wstring command = program + L" " + arguments + L" \"" + name + L"\"";
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    PROCESS_INFORMATION process{};
    if (name.empty() || !CreateProcessW((L"Z:\\bin\\" + program).c_str(), command.data(), nullptr, nullptr, FALSE, 0,
                                        nullptr, nullptr, &startup, &process)) {
        return false;
    }
    const ULONGLONG end = GetTickCount64() + 5000;
    while (isListed(path) != there && GetTickCount64() < end) {
        SwitchToThread();
    }
    return isListed(path) == there;
}

// In Wine the next temporary file can be a link to the host system's device that is always full. Wine cannot delete
// such a link, which is why the host system does.
bool WindowsWorld::fillDiskFor(const std::string& path) {
    return runHostProgram(L"ln", L"-s /dev/full", toWide(path + ".tmp"), true);
}

void WindowsWorld::freeDiskFor(const std::string& path) {
    EXPECT_TRUE(runHostProgram(L"rm", L"-f", toWide(path + ".tmp"), false));
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

// Top left, top right, bottom left, bottom right of quarters.jpg are red, green, blue, white.
std::string cornersOf(const base::Picture& picture) {
    const auto colourAt = [&](int x, int y) {
        const std::uint32_t pixel = picture.pixels[static_cast<std::size_t>(y * picture.width + x)];
        const auto strong = [pixel](unsigned shift) { return ((pixel >> shift) & 0xFFU) > 128; };
        return strong(16) && strong(8) && strong(0) ? 'w' : strong(16) ? 'r' : strong(8) ? 'g' : strong(0) ? 'b' : '?';
    };
    const int right = picture.width * 3 / 4;
    const int low = picture.height * 3 / 4;
    const int left = picture.width / 4;
    const int high = picture.height / 4;
    return {colourAt(left, high), colourAt(right, high), colourAt(left, low), colourAt(right, low)};
}

TEST(WicPictureDecoder, PicturesStandAsTheCameraWasHeld) {
    WicWorld world;
    const std::vector<std::string> corners = {"rgbw", "grwb", "wbgr", "bwrg", "rbgw", "brwg", "wgbr", "gwrb"};
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const std::string name = "orientation_" + std::to_string(i + 1) + ".jpg";
        const auto picture = world.decoder().decode(pathOf(name), 50, 40);
        ASSERT_TRUE(picture) << name;
        EXPECT_EQ(cornersOf(*picture), corners[i]) << name;
        EXPECT_EQ(picture->width, i < 4 ? 50 : 20) << name;
        EXPECT_EQ(picture->height, i < 4 ? 25 : 40) << name;
    }
}

TEST(WicPictureDecoder, TransparentPixelsAreMultipliedByTheirAlpha) {
    WicWorld world;
    const auto picture = world.decoder().decode(pathOf("half_red.png"), 8, 8);
    ASSERT_TRUE(picture);
    EXPECT_NEAR(picture->pixels[0] >> 24U, 0x80, 1);
    EXPECT_NEAR((picture->pixels[0] >> 16U) & 0xFFU, 0x80, 1);
    EXPECT_EQ(picture->pixels[0] & 0xFFFFU, 0U);
}

TEST(WicPictureDecoder, TheFileIsFreeAgainAfterwards) {
    WicWorld world;
    ScratchFolder scratch;
    const std::wstring copy = scratch.path().wstring() + L"\\a.jpg";
    ASSERT_TRUE(CopyFileW(toWide(pathOf("quarters.jpg")).c_str(), copy.c_str(), FALSE));
    EXPECT_TRUE(world.decoder().decode(windows::fromWide(copy), 50, 50));
    EXPECT_TRUE(windows::UniqueHandle(CreateFileW(copy.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr)));
}

INSTANTIATE_TEST_SUITE_P(Windows, DataProtectionContract,
                         testing::Values([] { return std::make_unique<windows::UserDataProtection>(); }));
INSTANTIATE_TEST_SUITE_P(Windows, FileSystemContract, testing::Values([] { return std::make_unique<WindowsWorld>(); }));
INSTANTIATE_TEST_SUITE_P(Windows, SettingsContract, testing::Values([] { return std::make_unique<CleanRegistry>(); }));
// The suite's texts are American English, which the test prefixes are set to.
INSTANTIATE_TEST_SUITE_P(Windows, LocaleContract,
                         testing::Values([] { return std::make_unique<windows::UserLocale>(); }));
INSTANTIATE_TEST_SUITE_P(Windows, PictureDecoderContract, testing::Values([] { return std::make_unique<WicWorld>(); }));

} // namespace
} // namespace contracts
