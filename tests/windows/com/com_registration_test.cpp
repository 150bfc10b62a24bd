// Self-registration, seen in the registry before and after.
#include "windows/com/com_support.h"

#include <aclapi.h>
#include <gtest/gtest.h>
#include <olectl.h>

#include <algorithm>
#include <set>
#include <string>
#include <vector>

namespace com_test {
namespace {

constexpr wchar_t kClasses[] = L"Software\\Classes";
constexpr bool kIs64Bit = sizeof(void*) == 8;

// Every key and value below the classes of a hive, one line each, in lower case as names of keys do not tell it.
using Snapshot = std::set<std::wstring>;

std::wstring lower(std::wstring text) {
    CharLowerBuffW(text.data(), static_cast<DWORD>(text.size()));
    return text;
}

void addValues(HKEY key, const std::wstring& path, Snapshot& lines) {
    static std::vector<wchar_t> name(16'384);
    static std::vector<BYTE> data(65'536);
    for (DWORD i = 0;; ++i) {
        auto nameLength = static_cast<DWORD>(name.size());
        auto dataLength = static_cast<DWORD>(data.size());
        DWORD type = 0;
        if (RegEnumValueW(key, i, name.data(), &nameLength, nullptr, &type, data.data(), &dataLength) !=
            ERROR_SUCCESS) {
            return;
        }
        std::wstring value = type == REG_SZ ? reinterpret_cast<const wchar_t*>(data.data()) : L"(no text)";
        lines.insert(lower(path + L" : " + std::wstring(name.data(), nameLength) + L" = " + value));
    }
}

void addKey(HKEY parent, const std::wstring& name, const std::wstring& path, Snapshot& lines) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(parent, name.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) {
        return;
    }
    lines.insert(lower(path));
    addValues(key, path, lines);
    wchar_t child[256];
    for (DWORD i = 0; RegEnumKeyW(key, i, child, 256) == ERROR_SUCCESS; ++i) {
        addKey(key, child, path + L"\\" + child, lines);
    }
    RegCloseKey(key);
}

Snapshot snapshot(HKEY hive) {
    Snapshot lines;
    addKey(hive, kClasses, L"", lines);
    return lines;
}

Snapshot addedTo(const Snapshot& before, const Snapshot& after) {
    Snapshot added;
    std::ranges::set_difference(after, before, std::inserter(added, added.end()));
    return added;
}

// Without what the system's own registration of a type library adds (interfaces for the other bitness too) or says in
// another way.
Snapshot withoutSystemsOwn(Snapshot lines) {
    std::erase_if(lines, [](const std::wstring& line) {
        return line.starts_with(L"\\wow6432node\\") || line.ends_with(L"\\proxystubclsid") ||
               line.find(L"\\proxystubclsid :") != line.npos || line.find(L"\\flags :") != line.npos;
    });
    return lines;
}

// Takes away the right to write below the machine-wide key, as a plain user meets it.
class DeniedKey {
public:
    explicit DeniedKey(const std::wstring& name) {
        EXPECT_EQ(
            RegCreateKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &m_key, nullptr),
            ERROR_SUCCESS);
        DWORD size = 0;
        RegGetKeySecurity(m_key, DACL_SECURITY_INFORMATION, nullptr, &size);
        m_original.resize(size);
        RegGetKeySecurity(m_key, DACL_SECURITY_INFORMATION, m_original.data(), &size);
        EXPLICIT_ACCESSW readOnly{};
        readOnly.grfAccessPermissions = KEY_READ | WRITE_DAC;
        readOnly.grfAccessMode = SET_ACCESS;
        readOnly.Trustee.TrusteeForm = TRUSTEE_IS_NAME;
        readOnly.Trustee.ptstrName = const_cast<wchar_t*>(L"EVERYONE");
        PACL list = nullptr;
        EXPECT_EQ(SetEntriesInAclW(1, &readOnly, nullptr, &list), DWORD{ERROR_SUCCESS});
        SECURITY_DESCRIPTOR descriptor;
        InitializeSecurityDescriptor(&descriptor, SECURITY_DESCRIPTOR_REVISION);
        SetSecurityDescriptorDacl(&descriptor, TRUE, list, FALSE);
        EXPECT_EQ(RegSetKeySecurity(m_key, DACL_SECURITY_INFORMATION, &descriptor), ERROR_SUCCESS);
        LocalFree(list);
    }
    DeniedKey(const DeniedKey&) = delete;
    DeniedKey& operator=(const DeniedKey&) = delete;
    ~DeniedKey() {
        RegSetKeySecurity(m_key, DACL_SECURITY_INFORMATION, m_original.data());
        RegCloseKey(m_key);
    }

private:
    HKEY m_key = nullptr;
    std::vector<BYTE> m_original;
};

class Registration : public testing::Test {
protected:
    Registration() {
        dll.unregisterServer(); // what a broken run may have left
        HKEY key = nullptr;     // on Windows every user has this key; a fresh Wine prefix does not
        RegCreateKeyExW(HKEY_CURRENT_USER, kClasses, 0, nullptr, 0, KEY_READ, nullptr, &key, nullptr);
        RegCloseKey(key);
        machineBefore = snapshot(HKEY_LOCAL_MACHINE);
        userBefore = snapshot(HKEY_CURRENT_USER);
    }
    ~Registration() override { dll.unregisterServer(); }

    [[nodiscard]] Snapshot machineAdded() const { return addedTo(machineBefore, snapshot(HKEY_LOCAL_MACHINE)); }
    [[nodiscard]] Snapshot userAdded() const { return addedTo(userBefore, snapshot(HKEY_CURRENT_USER)); }
    void expectEverythingAsBefore() const {
        EXPECT_EQ(snapshot(HKEY_LOCAL_MACHINE), machineBefore);
        EXPECT_EQ(snapshot(HKEY_CURRENT_USER), userBefore);
    }

    ComApartment apartment;
    LoadedDll dll;
    Snapshot machineBefore;
    Snapshot userBefore;
};

TEST_F(Registration, WritesWhatTheSystemNeedsAndTakesAllOfItAway) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    const Snapshot added = machineAdded();
    const std::wstring link = L"\\CLSID\\{163D87C8-36B0-481C-873F-8AEDC4846B6A}";
    const std::wstring control = L"\\CLSID\\{09989595-8470-4B41-9273-E1F56ACD064B}";
    const std::wstring library = L"\\TypeLib\\{DC824E71-183A-45B1-9128-FD5880046AC7}\\1.0";
    const std::wstring expected[] = {
        L"\\QuorvantisImage.clsQVI_Link\\CLSID :  = {163D87C8-36B0-481C-873F-8AEDC4846B6A}",
        L"\\QuorvantisImage.clsQVI_Globals\\CLSID :  = {B7432407-26C8-4C9D-A338-DA4A68149CD8}",
        L"\\QuorvantisImage.clsCABFile\\CLSID :  = {E8F584F4-8397-47C8-8989-BAE973FE49A6}",
        link + L"\\InprocServer32 :  = " + dllPath(),
        link + L"\\InprocServer32 : ThreadingModel = Apartment",
        link + L"\\ProgID :  = QuorvantisImage.clsQVI_Link",
        link + L"\\TypeLib :  = {DC824E71-183A-45B1-9128-FD5880046AC7}",
        link + L"\\Version :  = 1.0",
        link + L"\\Programmable",
        control + L"\\Control",
        control + L"\\MiscStatus :  = 0",
        control + L"\\MiscStatus\\1 :  = 131473", // what IOleObject::GetMiscStatus says too
        control + L"\\Implemented Categories\\{40FC6ED4-2438-11CF-A3DB-080036F12502}",
        library + L"\\409\\" + (kIs64Bit ? L"win64" : L"win32") + L" :  = " + dllPath(),
        L"\\Interface\\{1A80D469-410C-48CE-B824-C112BF629BB6} :  = _clsQVI_Link",
    };
    for (const std::wstring& line : expected) {
        EXPECT_TRUE(added.contains(lower(line))) << testing::PrintToString(line);
    }
    EXPECT_EQ(userAdded(), Snapshot{});
    ASSERT_EQ(dll.registerServer(), S_OK);
    EXPECT_EQ(machineAdded(), added) << "a second time changes nothing";
    ASSERT_EQ(dll.unregisterServer(), S_OK);
    expectEverythingAsBefore();
    EXPECT_EQ(dll.unregisterServer(), S_OK) << "nothing is there";
    expectEverythingAsBefore();
}

TEST_F(Registration, WithoutMachineWideRightsTheSameKeysGoToTheUser) {
    ASSERT_EQ(dll.registerServer(), S_OK);
    const Snapshot machineWide = machineAdded();
    ASSERT_EQ(dll.unregisterServer(), S_OK);
    // Whichever key refuses, the machine-wide place stays clean: all of it, or only the last one that is written.
    for (const std::wstring denied : {L"", L"\\TypeLib"}) {
        SCOPED_TRACE(testing::PrintToString(denied));
        {
            const DeniedKey noRights(kClasses + denied);
            EXPECT_EQ(dll.registerServer(), S_OK);
            EXPECT_EQ(machineAdded(), Snapshot{});
            Snapshot forUser = userAdded();
            for (const wchar_t* parent : {L"\\clsid", L"\\interface", L"\\typelib"}) {
                forUser.erase(parent); // the machine has these anyway
            }
            EXPECT_EQ(withoutSystemsOwn(forUser), withoutSystemsOwn(machineWide));
            EXPECT_EQ(dll.unregisterServer(), S_OK);
        }
        expectEverythingAsBefore();
    }
}

TEST_F(Registration, ALaterMachineWideRegistrationReplacesTheUsersOne) {
    {
        const DeniedKey noRights(kClasses);
        ASSERT_EQ(dll.registerServer(), S_OK);
    }
    ASSERT_NE(userAdded(), Snapshot{});
    EXPECT_EQ(dll.registerServer(), S_OK);
    EXPECT_EQ(userAdded(), Snapshot{});
    EXPECT_NE(machineAdded(), Snapshot{});
}

// 64-bit Windows keeps the classes of each bitness apart, but has one place for the names and the type library.
TEST_F(Registration, LeavesWhatTheDllOfTheOtherBitnessNeeds) {
    if constexpr (!kIs64Bit) {
        GTEST_SKIP() << "there is no other on 32-bit Windows";
    }
    const std::wstring otherClass = L"\\CLSID\\{163D87C8-36B0-481C-873F-8AEDC4846B6A}";
    const std::wstring library = L"\\TypeLib\\{DC824E71-183A-45B1-9128-FD5880046AC7}\\1.0\\409";
    const auto create = [](const std::wstring& name, REGSAM view) {
        HKEY key = nullptr;
        EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, (kClasses + name).c_str(), 0, nullptr, 0, KEY_READ | view,
                                  nullptr, &key, nullptr),
                  ERROR_SUCCESS);
        RegCloseKey(key);
    };
    create(otherClass, KEY_WOW64_32KEY);
    create(library + L"\\win32", 0);
    ASSERT_EQ(dll.registerServer(), S_OK);
    ASSERT_EQ(dll.unregisterServer(), S_OK);
    const Snapshot left = machineAdded();
    EXPECT_TRUE(left.contains(lower(L"\\QuorvantisImage.clsQVI_Link\\CLSID")));
    EXPECT_TRUE(left.contains(lower(library + L"\\win32")));
    EXPECT_FALSE(left.contains(lower(library + L"\\win64")));
    EXPECT_FALSE(left.contains(lower(otherClass)));

    RegDeleteKeyExW(HKEY_LOCAL_MACHINE, (kClasses + otherClass).c_str(), KEY_WOW64_32KEY, 0);
    ASSERT_EQ(dll.registerServer(), S_OK);
    ASSERT_EQ(dll.unregisterServer(), S_OK);
    expectEverythingAsBefore();
}

} // namespace
} // namespace com_test
