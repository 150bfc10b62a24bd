// Linking and unlinking pictures and specifications by hand; what lists, files and settings hold afterwards.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;

class Linking : public Shop {};

TEST_F(Linking, APictureIsWrittenOnceThoughItIsAddedTwice) {
    write("images\\a.jpg", "picture");
    write("images\\set\\b.jpg", "picture");
    startHost({"GEAR-20"});
    play(R"(
        wait frmQVI_Images
        expect lImages
        click cmdbrowse
        pick "{folder}images\a.jpg"
        expect lImages a.jpg
    )");
    waitUntilModified();
    EXPECT_EQ(read("images.xml"), "<images><p f1=\"GEAR-20\" f2=\"a.jpg\" f3=\"created\"/></images>\r\n");
    clearModified();
    play(R"(
        click cmdbrowse
        pick "{folder}images\a.jpg"
        expect lImages a.jpg a.jpg
    )");
    waitUntilModified();
    play(R"(
        click cmdbrowse
        pick "{folder}images\set\b.jpg"
        expect lImages a.jpg a.jpg set\b.jpg
        click cmdCancel
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("images.xml"), "<images><p f1=\"GEAR-20\" f2=\"a.jpg\" f3=\"created\"/>"
                                  "<p f1=\"GEAR-20\" f2=\"set\\b.jpg\" f3=\"created\"/></images>\r\n");
    EXPECT_EQ(namesLike("images*").size(), 2U) << "the folder and the document, nothing else";
}

TEST_F(Linking, ASpecificationIsDeletedByItsPlainNameOnly) {
    write("rtf\\gear.rtf", "document");
    startHost({"GEAR-20"});
    play(R"script(
        wait frmQVI_Images
        click cmdAddSpec
        pick "{folder}rtf\gear.rtf"
        input "Data sheet" "Enter a description"
        expect lRTF "gear.rtf (Data sheet)"
        click cmdAddSpec
        pick "{folder}rtf\gear.rtf"
        input "Again"
        expect lRTF "gear.rtf (Data sheet)" "gear.rtf (Again)"
    )script");
    const std::string both = "<rtf><p f1=\"GEAR-20\" f2=\"gear.rtf\" f3=\"created\" f4=\"Data sheet\"/>"
                             "<p f1=\"GEAR-20\" f2=\"gear.rtf\" f3=\"created\" f4=\"Again\"/></rtf>";
    EXPECT_EQ(read("rtf.xml"), both + "\r\n");
    play(R"script(
        select lRTF "gear.rtf (Again)"
        click cmdDeletSpec
        expect lRTF gear.rtf gear.rtf
    )script");
    EXPECT_EQ(read("rtf.xml"), both + "\r\n") << "the entry with its description names no file";
    play(R"script(
        select lRTF gear.rtf
        click cmdDeletSpec
        expect lRTF gear.rtf
        key Escape
    )script");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("rtf.xml"), "<rtf><p f1=\"GEAR-20\" f2=\"gear.rtf\" f3=\"created\" f4=\"Again\"/></rtf>")
        << "the first of the two goes";
    EXPECT_EQ(modified(), "Saved");
}

TEST_F(Linking, CancelledDialogsChangeNothingButACancelledDescriptionLinks) {
    startHost({"GEAR-20"});
    play(R"(
        wait frmQVI_Images
        click cmdbrowse
        pick-cancel
        expect-enabled cmdAddSpec
        click cmdAddSpec
        pick-cancel
        expect-enabled cmdAddSpec
        expect lImages
        expect lRTF
    )");
    EXPECT_TRUE(exists("rtf")) << "made without a word";
    EXPECT_FALSE(exists("images.xml"));
    EXPECT_FALSE(exists("rtf.xml"));
    EXPECT_EQ(modified(), "");
    write("rtf\\gear.pdf", "document");
    play(R"script(
        click cmdAddSpec
        pick "{folder}rtf\gear.pdf"
        input-cancel "Enter a description"
        expect lRTF "gear.pdf ()"
        key Escape
    )script");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("rtf.xml"), "<rtf><p f1=\"GEAR-20\" f2=\"gear.pdf\" f3=\"created\" f4=\"\"/></rtf>\r\n");
}

TEST_F(Linking, DeletingTakesTheFirstLinkOfThatNameAndReloadsBothLists) {
    write("images.xml", R"(<images><p f1="A" f2="a.jpg" f3="created"/><p f1="B" f2="a.jpg" f3="created"/>)"
                        R"(<p f1="A" f2="b.jpg" f3="created"/><p f1="A" f2="old.jpg" f3="deleted"/></images>)");
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        expect lImages a.jpg b.jpg
    )");
    // Another program links a specification meanwhile.
    write("rtf.xml", R"(<rtf><p f1="A" f2="new.rtf" f3="created" f4="x"/></rtf>)");
    play(R"(
        click cmdDelete
        expect lRTF new.rtf
        expect lImages a.jpg b.jpg
    )");
    waitUntilModified();
    EXPECT_THAT(read("images.xml"), HasSubstr("old.jpg")) << "with nothing selected nothing is written";
    play(R"(
        select lImages a.jpg
        click cmdDelete
        expect lImages b.jpg
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("images.xml"), "<images><p f1=\"B\" f2=\"a.jpg\" f3=\"created\"/>"
                                  "<p f1=\"A\" f2=\"b.jpg\" f3=\"created\"/>"
                                  "<p f1=\"A\" f2=\"old.jpg\" f3=\"deleted\"/></images>");
}

TEST_F(Linking, APictureOutsideTheFolderIsLinkedByTheRestOfItsPath) {
    const std::string outside = folder() + "elsewhere\\picture.jpg";
    write("elsewhere\\picture.jpg", "picture");
    const std::string rest = outside.substr((folder() + "images").size() + 1);
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        click cmdbrowse
        pick "{folder}elsewhere\picture.jpg"
        expect lImages ")" +
         rest + R"("
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("images.xml"), "<images><p f1=\"A\" f2=\"" + rest + "\" f3=\"created\"/></images>\r\n");
}

TEST_F(Linking, APictureThatIsGoneOrBrokenShowsAPlaceholder) {
    write("images.xml",
          R"(<images><p f1="A" f2="gone.jpg" f3="created"/><p f1="A" f2="broken.jpg" f3="created"/>)"
          R"(<p f1="A" f2="empty.jpg" f3="created"/><p f1="A" f2="..\..\x?.jpg" f3="created"/></images>)");
    write("images\\broken.jpg", "\xFF\xD8\xFF\xE0 no picture");
    write("images\\empty.jpg", "");
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        select lImages gone.jpg
        expect-text picPreview "No preview available."
        select lImages broken.jpg
        expect-text picPreview "No preview available."
        select lImages empty.jpg
        expect-text picPreview "No preview available."
        select lImages ..\..\x?.jpg
        expect-text picPreview "No preview available."
        expect-enabled cmdDelete
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
}

} // namespace
} // namespace end_to_end
