#include "contracts/programs_contract.h"

namespace contracts {
namespace {

TEST_P(ProgramsContract, OnlyProgramsHaveAVersion) {
    EXPECT_EQ(programs().version(path("unsigned.exe")), (base::FileVersion{{7, 2, 0, 1}}));
    EXPECT_EQ(programs().version(path("GOOD.EXE")), (base::FileVersion{{7, 2, 0, 1}}));
    for (const char* const name : {"text.exe", "missing.exe"}) {
        EXPECT_EQ(programs().version(path(name)), std::nullopt) << name;
    }
}

TEST_P(ProgramsContract, ATrustedSignatureNamesThePublisherAndAnyOtherTheProblem) {
    const ports::Signature good = programs().signature(path("good.exe"));
    EXPECT_TRUE(good.trusted);
    EXPECT_EQ(good.publisher, "Test Publisher");
    EXPECT_EQ(good.problem, "");
    for (const char* const name : {"unsigned.exe", "text.exe", "missing.exe"}) {
        const ports::Signature bad = programs().signature(path(name));
        EXPECT_FALSE(bad.trusted) << name;
        EXPECT_EQ(bad.publisher, "") << name;
        EXPECT_NE(bad.problem, "") << name;
    }
}

TEST_P(ProgramsContract, AHeldProgramCanBeCheckedAndStarted) {
    const std::unique_ptr<ports::HeldFile> held = programs().hold(path("good.exe"));
    const std::unique_ptr<ports::HeldFile> heldAgain = programs().hold(path("good.exe"));
    EXPECT_TRUE(programs().signature(path("good.exe")).trusted);
    EXPECT_TRUE(programs().version(path("good.exe")));
    programs().start(path("good.exe"));
    EXPECT_TRUE(world().wasStarted(path("good.exe")));
}

} // namespace
} // namespace contracts
