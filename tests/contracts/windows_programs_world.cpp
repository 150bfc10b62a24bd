// The suite of program files on Windows, with real signatures (tests/peers/with_programs), and what only those can
// show.
#include "base/error_number.h"
#include "contracts/programs_contract.h"
#include "contracts/scratch_folder.h"
#include "peers/trusted_authority.h"
#include "windows/adapters/windows_programs.h"
#include "windows/base/handles.h"
#include "windows/base/wide.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>

#include <windows.h>

#include <objbase.h>

namespace contracts {
namespace {

using windows::toWide;

std::filesystem::path folderOfPrograms() {
    const char* const folder = std::getenv("QVI_PROGRAMS");
    return folder == nullptr ? "" : folder;
}

class ProgramsAuthority final : public testing::Environment {
public:
    void SetUp() override {
        ASSERT_FALSE(folderOfPrograms().empty()) << "run it through tests/peers/with_programs";
        m_authority.emplace((folderOfPrograms() / "ca.pem").string());
        (void)CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); // for the shell
    }
    void TearDown() override {
        CoUninitialize();
        m_authority.reset();
    }

private:
    std::optional<peers::TrustedAuthority> m_authority;
};

const auto* const kAuthority = testing::AddGlobalTestEnvironment(new ProgramsAuthority);

// Copies of the programs, in a folder whose name needs care.
class WindowsProgramsWorld final : public ProgramsWorld {
public:
    WindowsProgramsWorld() {
        std::filesystem::create_directory(m_folder);
        for (const auto& entry : std::filesystem::directory_iterator(folderOfPrograms())) {
            if (entry.path().extension() == ".exe") {
                std::filesystem::copy_file(entry.path(), m_folder / entry.path().filename());
            }
        }
        std::ofstream(m_folder / "text.exe") << "no program";
    }
    ports::Programs& programs() override { return m_programs; }
    std::string path(const std::string& name) override { return windows::fromWide((m_folder / name).wstring()); }
    bool wasStarted(const std::string& path) override { return !traceOf(path).empty(); }

    // What the program writes when it is started, which is waited for; "" when it never does.
    static std::string traceOf(const std::string& path) {
        const std::filesystem::path trace(toWide(path + ".started"));
        std::string text;
        const ULONGLONG end = GetTickCount64() + 10'000;
        while (text.empty() && GetTickCount64() < end) {
            std::ifstream file(trace, std::ios::binary); // fails too while the program still moves it there
            text.assign(std::istreambuf_iterator<char>(file), {});
        }
        return text;
    }

private:
    ScratchFolder m_scratch;
    std::filesystem::path m_folder = m_scratch.path() / toWide("P\xC3\xA4r & \xD0\x96 (1), 100%");
    windows::WindowsPrograms m_programs;
};

TEST(WindowsPrograms, WhatIsWrongWithASignatureIsSaidInALine) {
    WindowsProgramsWorld world;
    const std::map<std::string, std::string> rows = {
        {"unsigned.exe", "It is not signed."},
        {"text.exe", "It is not signed."},
        {"appended.exe", "It is not signed."}, // what has no signature at its end, has none
        {"tampered.exe", "It was changed after it was signed."},
        {"transplanted.exe", "It was changed after it was signed."},
        {"unknown_signer.exe", "Its signer is not known on this computer."},
        {"self_signed.exe", "Its signer is not known on this computer."},
        {"expired.exe", "Its signer's certificate has expired, or is not valid yet."},
        {"web_certificate.exe", "Its signature could not be verified (error 00000010)."},
        {"missing.exe", "It cannot be read."}};
    for (const auto& [name, problem] : rows) {
        const ports::Signature signature = world.programs().signature(world.path(name));
        EXPECT_FALSE(signature.trusted) << name;
        EXPECT_EQ(signature.publisher, "") << name;
        EXPECT_EQ(signature.problem, problem) << name;
    }
    EXPECT_FALSE(world.programs().signature(world.path("forged.exe")).trusted);
    EXPECT_EQ(world.programs().signature(world.path("another_publisher.exe")).publisher, "Another Publisher");
}

TEST(WindowsPrograms, NobodyCanChangeAHeldFile) {
    WindowsProgramsWorld world;
    const std::string path = world.path("good.exe");
    const std::wstring name = toWide(path);
    const std::wstring other = toWide(world.path("unsigned.exe"));
    const auto writer = [&] {
        return windows::UniqueHandle(CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                                 nullptr, OPEN_EXISTING, 0, nullptr));
    };
    {
        const auto held = world.programs().hold(path);
        EXPECT_FALSE(writer());
        EXPECT_FALSE(MoveFileExW(other.c_str(), name.c_str(), MOVEFILE_REPLACE_EXISTING));
        EXPECT_FALSE(MoveFileW(name.c_str(), (name + L".old").c_str()));
        EXPECT_FALSE(DeleteFileW(name.c_str()));
        EXPECT_FALSE(CopyFileW(other.c_str(), name.c_str(), FALSE));
    }
    {
        const windows::UniqueHandle open = writer();
        EXPECT_TRUE(open);
        EXPECT_EQ(base::errorNumber([&] { (void)world.programs().hold(path); }), 70);
        EXPECT_EQ(world.programs().signature(path).problem, "It cannot be read.");
    }
    EXPECT_EQ(base::errorNumber([&] { (void)world.programs().hold(world.path("missing.exe")); }), 53);
    EXPECT_EQ(base::errorNumber([&] { (void)world.programs().hold(world.path("no folder\\good.exe")); }), 76);
}

TEST(WindowsPrograms, StartsMaximisedAndWithoutParameters) {
    WindowsProgramsWorld world;
    world.programs().start(world.path("unsigned.exe"));
    EXPECT_EQ(WindowsProgramsWorld::traceOf(world.path("unsigned.exe")), "show 3, parameters ''");
    world.programs().start(world.path("missing.exe")); // nothing happens, and nobody is asked
}

INSTANTIATE_TEST_SUITE_P(Windows, ProgramsContract,
                         testing::Values([] { return std::make_unique<WindowsProgramsWorld>(); }));

} // namespace
} // namespace contracts
