// The whole dialog without a mouse.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

class Keyboard : public Shop {};

TEST_F(Keyboard, TabVisitsEveryControlInOrderOfWorkAndComesBack) {
    const std::vector<std::string> order{"cmdAutoLink",       "chkExactMatch", "cmdCleanUp", "cmdWhatsLinked",
                                         "cmdWhatsNotLinked", "CheckRTF",      "lImages",    "cmdbrowse",
                                         "cmdDelete",         "lRTF",          "cmdAddSpec", "cmdDeletSpec",
                                         "cmdUpload",         "cmdExport",     "cmdCancel"};
    startHost({"A"});
    std::string script = "wait frmQVI_Images\nfocus " + order.front() + "\n";
    for (std::size_t i = 1; i <= order.size(); ++i) {
        script += "key Tab\nexpect-focus " + order[i % order.size()] + "\n";
    }
    for (std::size_t i = order.size(); i-- > order.size() - 3;) {
        script += "key Shift+Tab\nexpect-focus " + order[i] + "\n";
    }
    play(script + "key Escape");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
}

TEST_F(Keyboard, LinksAreAddedAndDeletedByKeysAlone) {
    write("images\\a.jpg", "picture");
    write("images.xml", R"(<images><p f1="A" f2="x.jpg" f3="created"/><p f1="A" f2="y.jpg" f3="created"/></images>)");
    startHost({"A"});
    // Two buttons share Alt+A: it means the next one after the focus.
    play(R"(
        wait frmQVI_Images
        focus lImages
        key Alt+A
        pick "{folder}images\a.jpg"
        expect lImages x.jpg y.jpg a.jpg
        focus lImages
        key Home Down
        key Alt+D
        expect lImages x.jpg a.jpg
        key Alt+C
        wait-closed frmQVI_Images
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
}

TEST_F(Keyboard, EnterThatAnswersABoxDoesNotCloseTheDialogToo) {
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        click cmdCleanUp
        wait-dialog box
        key Enter
        expect-enabled cmdCleanUp
        click cmdCleanUp
        wait-dialog box
        key Escape
        expect-enabled cmdCleanUp
        click cmdAddSpec
        wait-dialog file
        key Escape
        expect-enabled cmdAddSpec
        key Escape
        wait-closed frmQVI_Images
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
}

} // namespace
} // namespace end_to_end
