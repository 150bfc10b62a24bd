// Product codes that are awkward for XML, for XPath or for windows.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

class ProductCodes : public Shop {};

TEST_F(ProductCodes, AreLinkedAndFoundAgain) {
    struct Row {
        const char* name;
        std::string code;
        std::string stored; // as it stands in the file
    };
    const std::vector<Row> rows{
        {"double quotes", "1/2\" bolt", "1/2&quot; bolt"},
        {"ampersand", "NUTS & BOLTS", "NUTS &amp; BOLTS"},
        {"angle brackets", "<A>", "&lt;A&gt;"},
        {"accents", "CAF\xC3\x89-\xC3\x9F", "CAF\xC3\x89-\xC3\x9F"},
        {"beyond the basic plane", "\xF0\x9F\x94\xA7", "\xF0\x9F\x94\xA7"},
        {"line break and tab", "A\nB\tC", "A&#10;B&#9;C"},
        {"blanks around", "  A  ", "  A  "},
        {"empty", "", ""},
        {"10,000 characters", std::string(10'000, 'X'), std::string(10'000, 'X')},
        {"brackets and braces", "a]b[c}d", "a]b[c}d"},
    };
    write("images\\a.jpg", "picture");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        write("images.xml", "<images/>");
        startHost({row.code, row.code});
        play(R"(
            wait frmQVI_Images
            click cmdbrowse
            pick "{folder}images\a.jpg"
            expect lImages a.jpg
            key Escape
            host-prints "returned"
            wait frmQVI_Images
            expect lImages a.jpg
            key Escape
        )");
        EXPECT_EQ(hostEnds(), std::string(kSuccess) + std::string(kSuccess) + "END\r\n");
        EXPECT_EQ(read("images.xml"),
                  "<images><p f1=\"" + row.stored + "\" f2=\"a.jpg\" f3=\"created\"/></images>\r\n");
    }
}

TEST_F(ProductCodes, ThatCannotBeStoredFailInTheScript) {
    struct Row {
        const char* name;
        std::string code;
        std::string error;
    };
    const std::vector<Row> rows{
        {"an apostrophe", "O'NEIL", "error -2147467259 [QuorvantisImage] ["},
        {"a control character", "A\x01", "error -2147467259 [QuorvantisImage] ["},
        {"a lone surrogate", "A\xED\xA0\x80", "error 5 [QuorvantisImage] [Invalid procedure call or argument]"},
    };
    constexpr std::string_view kOther = R"(<images><p f1="A" f2="old.jpg" f3="created"/></images>)";
    write("images\\a.jpg", "picture");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        write("images.xml", kOther);
        startHost({row.code});
        play(R"(
            wait frmQVI_Images
            expect lImages
            click cmdDelete
            expect-enabled cmdbrowse
            click cmdbrowse
            pick "{folder}images\a.jpg"
            wait-closed frmQVI_Images
        )");
        EXPECT_THAT(hostEnds(), StartsWith(row.error));
        EXPECT_EQ(read("images.xml"), kOther);
    }
}

} // namespace
} // namespace end_to_end
