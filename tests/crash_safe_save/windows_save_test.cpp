// What the save does about other programs that hold its files, and about the target's own access rights.
#include "base/error_number.h"
#include "contracts/scratch_folder.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/base/handles.h"
#include "windows/base/wide.h"

#include <gtest/gtest.h>

#include <string>

#include <windows.h>
// after windows.h
#include <aclapi.h>

namespace windows {
namespace {

UniqueHandle opened(const std::wstring& path, DWORD sharing) {
    return UniqueHandle(CreateFileW(path.c_str(), GENERIC_READ, sharing, nullptr, OPEN_EXISTING, 0, nullptr));
}

class WindowsSave : public testing::Test {
protected:
    contracts::ScratchFolder m_scratch;
    std::wstring m_wide = m_scratch.path().wstring() + L"\\a.xml";
    std::string m_path = fromWide(m_wide);
    WindowsFileSystem m_atOnce{[](unsigned) { FAIL() << "nobody holds the file"; }};
};

TEST_F(WindowsSave, WaitsForWhoeverHoldsTheTargetOrTheTemporaryFileUpToHalfASecond) {
    for (const std::wstring& held : {m_wide, m_wide + L".tmp"}) {
        m_atOnce.replaceFile(m_path, "old");
        m_atOnce.replaceFile(fromWide(held), "old");
        UniqueHandle holder = opened(held, 0);
        unsigned waited = 0;
        WindowsFileSystem files([&](unsigned milliseconds) {
            waited += milliseconds;
            if (waited >= 100) {
                holder.reset();
            }
        });
        files.replaceFile(m_path, "new");
        EXPECT_EQ(files.readFile(m_path), "new");

        holder = opened(m_wide, 0);
        unsigned whole = 0;
        WindowsFileSystem patient([&](unsigned milliseconds) { whole += milliseconds; });
        EXPECT_EQ(base::errorNumber([&] { patient.replaceFile(m_path, "newer"); }), 70);
        EXPECT_EQ(whole, 500U);
    }
}

// Every entry's kind, flags and access mask.
std::string rightsOf(const std::wstring& path) {
    PACL rights = nullptr;
    UniqueLocal descriptor;
    GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &rights, nullptr,
                          descriptor.put());
    std::string text;
    for (DWORD i = 0; rights != nullptr && i < rights->AceCount; ++i) {
        void* entry = nullptr;
        GetAce(rights, i, &entry);
        const auto* allowed = static_cast<const ACCESS_ALLOWED_ACE*>(entry);
        text += std::to_string(allowed->Header.AceType) + ":" + std::to_string(allowed->Mask) + " ";
    }
    return text;
}

TEST_F(WindowsSave, TheTargetKeepsItsAccessRights) {
    m_atOnce.replaceFile(m_path, "old");
    EXPLICIT_ACCESSW everyone{};
    everyone.grfAccessPermissions = GENERIC_ALL;
    everyone.grfAccessMode = SET_ACCESS;
    everyone.Trustee.TrusteeForm = TRUSTEE_IS_NAME;
    std::wstring name = L"Everyone";
    everyone.Trustee.ptstrName = name.data();
    UniqueLocal rights;
    ASSERT_EQ(SetEntriesInAclW(1, &everyone, nullptr, reinterpret_cast<PACL*>(rights.put())), ERROR_SUCCESS);
    ASSERT_EQ(SetNamedSecurityInfoW(m_wide.data(), SE_FILE_OBJECT,
                                    DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                    static_cast<PACL>(rights.get()), nullptr),
              ERROR_SUCCESS);
    const std::string before = rightsOf(m_wide);
    m_atOnce.replaceFile(fromWide(m_wide) + ".other", "a new file");
    ASSERT_NE(rightsOf(m_wide + L".other"), before) << "the target's rights are nothing special";
    m_atOnce.replaceFile(m_path, "new");
    EXPECT_EQ(rightsOf(m_wide), before);
}

} // namespace
} // namespace windows
