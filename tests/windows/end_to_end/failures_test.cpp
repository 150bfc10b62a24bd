// Folders that are missing and files that cannot be written: what the user sees, and what the host is told.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr std::string_view kOneLink = R"(<images><p f1="A" f2="old.jpg" f3="created"/></images>)";

class Failures : public Shop {};

TEST_F(Failures, AMissingImagesFolderIsExplained) {
    std::filesystem::remove(folder() + "images");
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        click cmdbrowse
        wait-dialog box
        box-icon on
        box "Please create an image folder and place your images in that folder.{n}The folder should be called: {folder}images" OK "QuorvantisImage"
        expect-enabled cmdbrowse
        expect lImages
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(modified(), "");
    EXPECT_FALSE(exists("images"));
}

TEST_F(Failures, AnAddThatCannotBeSavedClosesTheDialogAndFailsInTheScript) {
    struct Row {
        const char* name;
        const char* button;
        const char* document;
        std::string answers;
        bool locked;
        std::string error;
    };
    const std::string picture = "pick \"{folder}images\\a.jpg\"\n";
    const std::string specification = "pick \"{folder}rtf\\a.rtf\"\ninput \"x\"\n";
    const std::vector<Row> rows{
        {"read-only images.xml", "cmdbrowse", "images.xml", picture, false,
         "75 [QuorvantisImage] [Path/File access error]"},
        {"images.xml held open", "cmdbrowse", "images.xml", picture, true, "70 [QuorvantisImage] [Permission denied]"},
        {"read-only rtf.xml", "cmdAddSpec", "rtf.xml", specification, false,
         "75 [QuorvantisImage] [Path/File access error]"},
        {"rtf.xml held open", "cmdAddSpec", "rtf.xml", specification, true, "70 [QuorvantisImage] [Permission denied]"},
    };
    write("images\\a.jpg", "picture");
    write("rtf\\a.rtf", "document");
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        const std::string root = std::string_view(row.document) == "rtf.xml" ? "rtf" : "images";
        const std::string before = "<" + root + R"(><p f1="A" f2="old" f3="created"/></)" + root + ">";
        write(row.document, before);
        clearModified();
        startHost({"A", "A"});
        play("wait frmQVI_Images");
        {
            std::optional<LockedFile> lock;
            if (row.locked) {
                lock.emplace(folder() + row.document);
            } else {
                setReadOnly(row.document, true);
            }
            play(std::string("click ") + row.button + "\n" + row.answers + "host-prints \"returned\"");
        }
        setReadOnly(row.document, false);
        EXPECT_EQ(modified(), "Saved");
        EXPECT_EQ(read(row.document), before) << "the old document stays whole";
        // The failure leaves nothing behind: the next call opens a fresh dialog.
        play("wait frmQVI_Images\nexpect-caption \"Link an image to A\"\nkey Escape");
        EXPECT_EQ(hostEnds(), "error " + row.error + "\r\nreturned [] False\r\n" + std::string(kSuccess) + "END\r\n");
        EXPECT_TRUE(namesLike("*.tmp").empty());
    }
}

TEST_F(Failures, ADeleteThatCannotBeSavedBringsTheLinkBackWithoutAWord) {
    write("images.xml", kOneLink);
    startHost({"A"});
    play("wait frmQVI_Images\nexpect lImages old.jpg");
    setReadOnly("images.xml", true);
    play(R"(
        select lImages old.jpg
        click cmdDelete
        expect lImages old.jpg
        expect-enabled cmdDelete
    )");
    waitUntilModified();
    play("key Escape");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    setReadOnly("images.xml", false);
    EXPECT_EQ(read("images.xml"), kOneLink);
}

TEST_F(Failures, ADocumentWithAnotherRootTakesNoLink) {
    write("images.xml", R"(<rtf><p f1="A" f2="a.rtf"/></rtf>)");
    write("images\\a.jpg", "picture");
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        expect lImages
        click cmdbrowse
        pick "{folder}images\a.jpg"
        wait-closed frmQVI_Images
    )");
    EXPECT_THAT(hostEnds(), StartsWith("error 91 [QuorvantisImage] [Object variable or With block variable not set]"));
    EXPECT_EQ(read("images.xml"), R"(<rtf><p f1="A" f2="a.rtf"/></rtf>)");
}

} // namespace
} // namespace end_to_end
