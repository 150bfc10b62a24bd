// The ways to close the image manager, and what the host then gets.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;

class Closing : public Shop {};

TEST_F(Closing, EveryWayToCloseReturnsTheSameToTheHost) {
    struct Row {
        const char* name;
        std::string script;
    };
    const std::vector<Row> rows{
        {"Enter in a list", "focus lImages\nkey Enter"},
        {"Enter on a button other than Close", "focus cmdDelete\nkey Enter"},
        {"Enter on a check box", "focus chkExactMatch\nkey Enter"},
        {"Escape", "focus lRTF\nkey Escape"},
        {"Escape on a button", "focus cmdAutoLink\nkey Escape"},
        {"the Close button", "click cmdCancel"},
        {"the Close button by its letter", "key Alt+C"},
        {"the close box", "close frmQVI_Images"},
        {"Alt+F4", "key Alt+F4"},
    };
    write("images.xml", R"(<images><p f1="A" f2="a.jpg" f3="created"/></images>)");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        startHost({"A"});
        play("wait frmQVI_Images\nexpect lImages a.jpg\n" + row.script + "\nwait-closed frmQVI_Images");
        EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    }
    EXPECT_EQ(modified(), "") << "looking is no change";
    EXPECT_EQ(read("images.xml"), R"(<images><p f1="A" f2="a.jpg" f3="created"/></images>)");
    EXPECT_FALSE(exists("rtf.xml")) << "nothing is written on opening";
}

TEST_F(Closing, TheNextCallStartsAfresh) {
    write("images.xml", R"(<images><p f1="A" f2="a.jpg" f3="created"/><p f1="B" f2="b.jpg" f3="created"/></images>)");
    startHost({"A", "B"});
    play(R"(
        wait frmQVI_Images
        expect-caption "Link an image to A"
        expect lImages a.jpg
        check chkExactMatch on
        select lImages a.jpg
        expect-text picPreview "No preview available."
        click cmdCancel
        wait-closed frmQVI_Images
    )");
    play(R"(
        host-prints "returned"
        wait frmQVI_Images
        expect-caption "Link an image to B"
        expect-text fraImages "Step 2 - Link an image to B"
        expect lImages b.jpg
        expect chkExactMatch off
        expect-text picPreview "Select a linked picture to see it here."
        expect-hidden List1
        key Enter
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + std::string(kSuccess) + "END\r\n");
}

} // namespace
} // namespace end_to_end
