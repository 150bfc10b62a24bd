// Automation values, run-time errors and error-ignoring routines.
#include "base/date_time.h"
#include "base/file_version.h"
#include "base/number.h"
#include "base/relative_name.h"
#include "base/resume_next.h"
#include "base/runtime_error.h"
#include "base/variant.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_late_bound.h"

#include <gtest/gtest.h>

#include <limits>
#include <new>
#include <stdexcept>
#include <vector>

namespace base {
namespace {

std::int32_t numberOf(const auto& step) {
    try {
        step();
        return 0;
    } catch (const RuntimeError& e) {
        return e.number();
    }
}

TEST(Variant, TextIsWhatAutomationMakesOfTheValue) {
    struct Row {
        Variant value;
        std::string text;
    };
    const std::vector<Row> rows = {{Empty{}, ""},    {true, "True"},
                                   {false, "False"}, {std::numeric_limits<std::int32_t>::min(), "-2147483648"},
                                   {0.5, "0.5"},     {std::string("x"), "x"},
                                   {3.0, "3"}};
    for (const Row& row : rows) {
        EXPECT_EQ(toText(row.value), row.text);
    }
    EXPECT_EQ(numberOf([] { (void)toText(Null{}); }), 94);
    EXPECT_EQ(numberOf([] { (void)toText(ObjectRef()); }), 13);
}

TEST(Variant, NothingIsAnObjectToo) {
    const ObjectRef object = std::make_shared<fakes::FakeLateBound>();
    EXPECT_EQ(toObject(object), object);
    for (const Variant& nothing : {Variant(), Variant(Null{}), Variant(ObjectRef())}) {
        EXPECT_EQ(toObject(nothing), nullptr);
    }
    EXPECT_EQ(numberOf([] { (void)toObject("text"); }), 13);
}

TEST(Variant, EqualityFollowsAutomation) {
    const ObjectRef object = std::make_shared<fakes::FakeLateBound>();
    const ObjectRef other = std::make_shared<fakes::FakeLateBound>();
    struct Row {
        Variant left, right;
        bool equal;
    };
    const std::vector<Row> rows = {
        {Empty{}, Empty{}, true},
        {Empty{}, std::string(), true},
        {Empty{}, 0, true},
        {Empty{}, 0.0, true},
        {Empty{}, false, true},
        {Empty{}, std::string("0"), false},
        {Empty{}, true, false},
        {Null{}, Null{}, false},
        {Null{}, Empty{}, false},
        {true, -1, true},
        {true, 1, false},
        {1, 1.0, true},
        {std::string("1"), 1, false},
        {std::string("a"), std::string("A"), false},
        {object, object, true},
        {object, other, false},
        {Empty{}, object, false},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(equals(rows[i].left, rows[i].right), rows[i].equal) << "row " << i;
        EXPECT_EQ(equals(rows[i].right, rows[i].left), rows[i].equal) << "row " << i << " turned round";
    }
}

TEST(ResumeNext, IgnoresRunTimeErrorsButNothingGraver) {
    int value = 1;
    EXPECT_TRUE(resumeNext([&] { value = 2; }));
    EXPECT_FALSE(resumeNext([&] {
        throw RuntimeError(error::kPathFileAccess);
        value = 3;
    }));
    EXPECT_EQ(value, 2);
    EXPECT_EQ(resumeNext([]() -> int { throw RuntimeError(-2147467259, "library"); }), std::nullopt);
    EXPECT_THROW(resumeNext([] { throw RuntimeError(error::kOutOfMemory); }), RuntimeError);
    EXPECT_THROW(resumeNext([] { throw std::bad_alloc(); }), std::bad_alloc);
    EXPECT_THROW(resumeNext([] { throw std::logic_error("a fault of ours"); }), std::logic_error);
}

TEST(RuntimeError, CarriesTheStandardTextUnlessGivenAnother) {
    const RuntimeError standard(error::kPathFileAccess);
    EXPECT_EQ(standard.description(), "Path/File access error");
    EXPECT_EQ(standard.source(), "QuorvantisImage");
    EXPECT_EQ(RuntimeError(4711).description(), "Application-defined or object-defined error");
    EXPECT_STREQ(RuntimeError(1004, "theirs", "text").what(), "text");
}

TEST(FileTimestamp, SortsByTimeOverEveryTurn) {
    fakes::FakeClock clock({2026, 12, 31, 23, 59, 59});
    EXPECT_EQ(fileTimestamp(clock.now()), "20261231_235959");
    clock.advance(std::chrono::seconds(1));
    EXPECT_EQ(fileTimestamp(clock.now()), "20270101_000000");
    clock.set({2028, 2, 28, 12, 30, 5});
    clock.advance(std::chrono::hours(24));
    EXPECT_EQ(fileTimestamp(clock.now()), "20280229_123005");
}

TEST(DateStamp, NamesADayOfTheCalendarAndNothingElse) {
    const DateTime day{2024, 2, 29, 23, 59, 59};
    EXPECT_EQ(dateStamp(day), "20240229");
    EXPECT_EQ(dayOf("20240229"), dayOf(day));
    EXPECT_EQ(dayOf("20240301"), dayOf(day) + std::chrono::days{1});
    for (const char* const text :
         {"", "2024022", "202402290", "20230229", "20241301", "20240100", "2024-229", " 2024229", "yyyyMMdd"}) {
        EXPECT_EQ(dayOf(text), std::nullopt) << text;
    }
}

TEST(Number, TextsThatAreDecimalNumbersAndOthers) {
    struct Row {
        std::string_view text;
        std::optional<double> number;
    };
    const std::vector<Row> rows = {{"30", 30.0},          {" 8080 ", 8080.0},     {"-1.5", -1.5},
                                   {"+2e3", 2000.0},      {"", std::nullopt},     {"x", std::nullopt},
                                   {"30 days", {}},       {"1,5", std::nullopt},  {"0x10", std::nullopt},
                                   {"inf", std::nullopt}, {"nan", std::nullopt},  {"1e999", std::nullopt},
                                   {"+-1", std::nullopt}, {"\t30", std::nullopt}, {"3 0", std::nullopt}};
    for (const Row& row : rows) {
        EXPECT_EQ(toNumber(row.text), row.number) << row.text;
    }
}

TEST(RelativeName, OnlyPlainFilesBelowTheFolderPass) {
    struct Row {
        std::string name;
        bool stays;
        bool isFile;
    };
    const std::vector<Row> rows = {{"a.txt", true, true},         {"sub\\deep/..b..c.txt", true, true},
                                   {"common1.txt", true, true},   {"COM10", true, true},
                                   {"\xC3\xA9.txt", true, true},  {"", true, false},
                                   {"a\\\\b", true, false},       {"a\\", true, false},
                                   {".. \\a", true, false},       {"a\\...", true, false},
                                   {"NUL", true, false},          {"sub\\nul .tar.gz", true, false},
                                   {"aux.txt\\a", true, false},   {"Lpt9.prn", true, false},
                                   {"com\xC2\xB2", true, false},  {"CONOUT$", true, false},
                                   {"a?.txt", true, false},       {std::string("a\0b", 3), true, false},
                                   {"..\\a", false, false},       {"a/../b", false, false},
                                   {"a\\..", false, false},       {"\\a", false, false},
                                   {"/a", false, false},          {"c:a", false, false},
                                   {"a.txt:stream", false, false}};
    for (const Row& row : rows) {
        EXPECT_EQ(staysInside(row.name), row.stays) << row.name;
        EXPECT_EQ(namesAFileInside(row.name), row.isFile) << row.name;
    }
}

TEST(FileVersion, TextWithUpToFourNumbersIsOne) {
    const auto version = [](std::uint16_t a, std::uint16_t b, std::uint16_t c, std::uint16_t d) {
        return std::optional(FileVersion{{a, b, c, d}});
    };
    EXPECT_EQ(toFileVersion("7"), version(7, 0, 0, 0));
    EXPECT_EQ(toFileVersion(" 7.2 "), version(7, 2, 0, 0));
    EXPECT_EQ(toFileVersion("1.2.3.65535"), version(1, 2, 3, 65535));
    for (const char* const text :
         {"", " ", "7.", ".7", "7..2", "1.2.3.4.5", "1.2.3.65536", "-1", "7a", "7 2", "next"}) {
        EXPECT_EQ(toFileVersion(text), std::nullopt) << text;
    }
    EXPECT_LT(version(7, 9, 0, 0), version(7, 10, 0, 0));
}

} // namespace
} // namespace base
