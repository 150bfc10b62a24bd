#include "base/text.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

#ifdef _WIN32
#include <windows.h>
#endif

namespace base {
namespace {

TEST(Text, EveryUtf16UnitSurvivesTheWayInAndOut) {
    for (unsigned unit = 0; unit <= 0xFFFF; ++unit) { // lone surrogates among them
        const std::u16string text = {u'<', static_cast<char16_t>(unit), u'>'};
        const std::string utf8 = toUtf8(text);
        ASSERT_EQ(toUtf16(utf8), text) << std::hex << unit;
        ASSERT_EQ(utf16Length(utf8), 3U) << std::hex << unit;
        ASSERT_EQ(isValidUtf8(utf8), unit < 0xD800 || unit > 0xDFFF) << std::hex << unit;
    }
}

TEST(Text, PairsAndLoneSurrogates) {
    struct Row {
        std::u16string utf16;
        std::string utf8;
    };
    const std::vector<Row> rows = {
        {u"\U0001F5BC", "\xF0\x9F\x96\xBC"},
        {u"\U00010000\U0010FFFF", "\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"},
        {{0xDC00, 0xD800}, "\xED\xB0\x80\xED\xA0\x80"}, // in the wrong order they are no pair
        {{0xD800, 0xD800, 0xDC00}, "\xED\xA0\x80\xF0\x90\x80\x80"},
        {{u'a', 0, u'b'}, std::string("a\0b", 3)},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(toUtf8(row.utf16), row.utf8);
        EXPECT_EQ(toUtf16(row.utf8), row.utf16);
        EXPECT_EQ(utf16Length(row.utf8), row.utf16.size());
    }
}

TEST(Text, BytesThatAreNotUtf8CountAsOneReplacementEach) {
    struct Row {
        std::string bytes;
        std::u16string read;
    };
    const std::vector<Row> rows = {
        {"\x80", u"\uFFFD"},
        {"a\xFFz", u"a\uFFFDz"},
        {"\xC3", u"\uFFFD"},                               // cut off
        {"\xE4\xBA", u"\uFFFD\uFFFD"},                     //
        {"\xF0\x9F\x96", u"\uFFFD\uFFFD\uFFFD"},           //
        {"\xC0\x80", u"\uFFFD\uFFFD"},                     // overlong
        {"\xE0\x80\xAF", u"\uFFFD\uFFFD\uFFFD"},           //
        {"\xF0\x80\x80\xAF", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, //
        {"\xF4\x90\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD"}, // above U+10FFFF
        {"\xF8\x88\x80\x80\x80", u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"},
        {"\xC3(", u"\uFFFD("},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(toUtf16(row.bytes), row.read) << testing::PrintToString(row.bytes);
        EXPECT_EQ(utf16Length(row.bytes), row.read.size()) << testing::PrintToString(row.bytes);
        EXPECT_FALSE(isValidUtf8(row.bytes)) << testing::PrintToString(row.bytes);
        EXPECT_NO_THROW((void)upperCase(row.bytes));
    }
}

TEST(Text, PositionsCountUtf16Units) {
    const std::string text = "\xC3\xA9\xF0\x9F\x96\xBCz"; // one unit, two units, one unit
    struct Row {
        std::size_t position;
        std::string rest;
    };
    const std::vector<Row> rows = {{0, text},
                                   {1, text},
                                   {2, "\xF0\x9F\x96\xBCz"},
                                   {3, "\xED\xB6\xBCz"}, // lone low half
                                   {4, "z"},
                                   {5, ""},
                                   {99, ""}};
    for (const Row& row : rows) {
        EXPECT_EQ(fromPosition(text, row.position), row.rest) << row.position;
    }
}

TEST(Text, UpperCaseIsOneToOneInEveryLocale) {
    EXPECT_EQ(upperCase("a-z i O'Neil 1"), "A-Z I O'NEIL 1");
    EXPECT_EQ(upperCase("\xC3\xA9\xC3\xBF\xC3\x9F\xC4\xB1"),
              "\xC3\x89\xC5\xB8\xC3\x9F\xC4\xB1"); // e acute, y diaeresis, sharp s, dotless i
    EXPECT_EQ(upperCase("\xF0\x90\x90\xA8 \xED\xA0\x80 \xFF"),
              "\xF0\x90\x90\xA8 \xED\xA0\x80 \xFF"); // beyond its planes: kept
}

#ifdef _WIN32
// Wine 8 knows the same Unicode letters as the table; an older Windows knows fewer.
TEST(Text, UpperCaseAgreesWithTheSystem) {
    std::string differences;
    for (unsigned unit = 1; unit <= 0xFFFF; ++unit) {
        wchar_t system[2] = {static_cast<wchar_t>(unit), 0};
        CharUpperW(system);
        const std::u16string ours = toUtf16(upperCase(toUtf8(std::u16string(1, static_cast<char16_t>(unit)))));
        if (ours.size() != 1 || ours[0] != static_cast<char16_t>(system[0])) {
            char line[64];
            std::snprintf(line, sizeof line, "%04X: system %04X, ours %04X\n", unit, unsigned{system[0]},
                          unsigned{ours[0]});
            differences += line;
        }
    }
    EXPECT_EQ(differences, "");
}
#endif

TEST(Text, APartIsFoundWhereverItStands) {
    for (const std::string part : {"", "A", "ab", "aAb", "aba", "BABAB", "<a"}) {
        for (unsigned pattern = 0; pattern < 1U << 9U; ++pattern) {
            std::string text; // grows to each text of nine letters
            for (unsigned bit = 0; bit < 9; ++bit) {
                const bool found = upperCase(text).find(upperCase(part)) != std::string::npos;
                ASSERT_EQ(containsIgnoringCase(text, part), found) << part << " in " << text;
                text += (pattern >> bit & 1U) != 0 ? 'a' : 'B';
            }
        }
    }
    EXPECT_TRUE(containsIgnoringCase("\xFF\xC3<sysDOWN>", "<SYSDOWN>"));
    EXPECT_FALSE(containsIgnoringCase("[SYSDOWN>", "{sysdown>")) << "no letters";
}

TEST(Text, OnlyBlanksAreTrimmed) {
    EXPECT_EQ(trim("  a b  "), "a b");
    EXPECT_EQ(trim("\ta\xC2\xA0"), "\ta\xC2\xA0");
    EXPECT_EQ(trim("   "), "");
    EXPECT_EQ(trim(""), "");
}

} // namespace
} // namespace base
