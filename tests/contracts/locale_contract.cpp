#include "contracts/locale_contract.h"

#include <string>
#include <vector>

namespace contracts {
namespace {

TEST_P(LocaleContract, DatesReadAsTheUserWritesThem) {
    struct Row {
        base::DateTime time;
        std::string text;
    };
    const std::vector<Row> rows = {{{2026, 11, 15, 19, 8, 12}, "11/15/2026 7:08:12 PM"},
                                   {{1980, 1, 1, 0, 0, 2}, "1/1/1980 12:00:02 AM"},
                                   {{2107, 12, 31, 12, 0, 0}, "12/31/2107 12:00:00 PM"},
                                   {{2026, 2, 3, 0, 0, 0}, "2/3/2026"},
                                   {{}, "12:00:00 AM"}};
    for (const Row& row : rows) {
        EXPECT_EQ(locale().generalDate(row.time), row.text);
    }
    EXPECT_EQ(locale().shortMonthName(1), "Jan");
    EXPECT_EQ(locale().shortMonthName(12), "Dec");
}

TEST_P(LocaleContract, TextsAreEqualWhateverTheirCase) {
    EXPECT_TRUE(locale().equalIgnoringCase("Sub\\A.TXT", "sub\\a.txt"));
    EXPECT_TRUE(locale().equalIgnoringCase("\xC3\x89T\xC3\x89.txt", "\xC3\xA9t\xC3\xA9.TXT"));
    EXPECT_TRUE(locale().equalIgnoringCase("", ""));
    EXPECT_FALSE(locale().equalIgnoringCase("a.txt", "a.tx"));
    EXPECT_FALSE(locale().equalIgnoringCase("e.txt", "\xC3\xA9.txt"));
    EXPECT_FALSE(locale().equalIgnoringCase("", "a"));
}

} // namespace
} // namespace contracts
