// The script language: words, quotes, escapes, and that a faulty script is refused before anything is clicked.
#include "drive/script.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using Words = std::vector<std::string>;

TEST(Script, SplitsLinesIntoWords) {
    struct Row {
        const char* name;
        std::string line;
        Words words;
    };
    const std::vector<Row> rows{
        {"bare words", "select lImages a.jpg", {"select", "lImages", "a.jpg"}},
        {"blanks and tabs between", "  click \t cmdDelete  ", {"click", "cmdDelete"}},
        {"a backslash is itself", R"(pick "C:\new folder\a.jpg")", {"pick", R"(C:\new folder\a.jpg)"}},
        {"a doubled quote is a quote", R"(note "say ""yes""")", {"note", R"(say "yes")"}},
        {"an empty word", R"(expect txtName "")", {"expect", "txtName", ""}},
        {"a list that must be empty", "expect lImages", {"expect", "lImages"}},
        {"line break, tab and brace", R"(note "a{n}b{t}c{{d}")", {"note", "a\r\nb\tc{d}"}},
        {"a UTF-16 unit", R"(note "caf{u00E9}")", {"note", "caf\xC3\xA9"}},
        {"a lone surrogate stays one unit", R"(note "{uD800}")", {"note", "\xED\xA0\x80"}},
        {"a brace outside quotes is plain", "note {n}", {"note", "{n}"}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const auto commands = drive::parseScript(row.line);
        ASSERT_EQ(commands.size(), 1U);
        Words words{commands[0].verb};
        words.insert(words.end(), commands[0].arguments.begin(), commands[0].arguments.end());
        EXPECT_EQ(words, row.words);
    }
}

TEST(Script, SkipsCommentsAndCountsLines) {
    const auto commands = drive::parseScript("\xEF\xBB\xBF# a person\r\n\r\nwait frmOne\r\n   # more\nclick cmdOK");
    ASSERT_EQ(commands.size(), 2U);
    EXPECT_EQ(commands[0].line, 3U);
    EXPECT_THAT(commands[0].arguments, ElementsAre("frmOne"));
    EXPECT_EQ(commands[1].line, 5U);
}

TEST(Script, RefusesAFaultyLineByItsNumber) {
    struct Row {
        std::string line;
        std::string reason;
    };
    const std::vector<Row> rows{
        {"clikc cmdOK", "line 2: unknown command 'clikc'"}, {"click", "line 2: usage: click CONTROL"},
        {"click a b", "line 2: usage: click CONTROL"},      {"note \"open", "line 2: a quote is not closed"},
        {"note \"a\"b", "line 2: a blank must follow"},     {"note \"{n\"", "line 2: a brace is not closed"},
        {"note \"{u12}\"", "line 2: unknown escape {u12}"}, {"note \"{u00G1}\"", "line 2: unknown escape {u00G1}"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.line);
        try {
            static_cast<void>(drive::parseScript("wait frmOne\n" + row.line));
            FAIL() << "accepted";
        } catch (const drive::ScriptError& error) {
            EXPECT_THAT(error.what(), HasSubstr(row.reason));
        }
    }
}

} // namespace
