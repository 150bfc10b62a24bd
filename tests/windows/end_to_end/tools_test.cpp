// The tools for the whole list, worked by a person through their boxes and the folder picker.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <fstream>
#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

constexpr char kPriceList[] = "c:\\pl.dat"; // wherever the data folder is

class Tools : public Shop {
protected:
    ~Tools() override { std::remove(kPriceList); }

    static void writePriceList(std::string_view lines) { std::ofstream(kPriceList, std::ios::binary) << lines; }
};

TEST_F(Tools, AutoLinkFindsTheFolderAndSavesItsLinks) {
    writePriceList("GEAR\r\nBOLT \r\n\r\n");
    write("images\\gear-front.jpg", "");
    write("images\\gear.jpg", "");
    write("images\\bolt.txt", "");
    startHost({"GEAR"});
    play(R"(
        wait frmQVI_Images
        click cmdAutoLink
        box "All JPG files {n}in the folder will be linked to there respective products {n}if" OK
        wait frmBrowseGeneral
        expect-focus Dir1
        expect Text1 "{folder}images\"
        expect File1 bolt.txt gear-front.jpg gear.jpg
        click OKButton
        box "Press OK and wait a few minutes.." OK
        box "1 of 1 new images were linked to your priclist..." OK
        wait frmQVI_Images
        expect-hidden List1
        expect-caption "Link an image to GEAR"
        expect-enabled cmdAutoLink
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("images.xml"), "<images><p f1=\"GEAR\" f2=\"GEAR-FRONT.JPG\" f3=\"created\"/></images>\r\n");
    EXPECT_EQ(modified(), "Saved");
}

TEST_F(Tools, TheFolderPickerWorksByKeyboardAndHoldsOnToAnUnfinishedPath) {
    write("images\\inner\\a.jpg", "");
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        click cmdAutoLink
        box "This option will browse a desired folder." OK
        wait frmBrowseGeneral
        key Down Enter
        expect Text1 "{folder}images\inner\"
        expect File1 a.jpg
        focus Text1
        key Tab
        box "You must have a file name" OK
        expect-focus Text1
        type Text1 "{folder}images\inner\a.jpg"
        key Tab
        expect-focus OKButton
        focus Dir1
        key Escape
        wait-closed frmBrowseGeneral
        wait frmQVI_Images
        expect-caption "Link an image to A"
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_FALSE(exists("images.xml"));
}

TEST_F(Tools, ReportsSayWhatIsLinkedAndWhatIsNot) {
    write("pltemp2.dat", "A,first\r\nB,second\r\n");
    write("images\\a.jpg", "");
    write("images.xml", R"(<images><p f1="A" f2="a.jpg" f3="created"/></images>)");
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        click cmdWhatsLinked
        box "Finished...{n}Results also in {folder}WhatsLinked.csv" OK
        expect List1 "B:second has no image."
        expect-visible cmdWhatsNotLinked
        check CheckRTF on
        click cmdWhatsNotLinked
        box "Results also in {folder}WhatsNotLinked.csv" OK
    )");
    EXPECT_EQ(read("WhatsLinked.csv"), "A,first, Image found: a.jpg, No RTF\r\nB,second, No Image, No RTF\r\n");
    EXPECT_EQ(read("WhatsNotLinked.csv"), "B,second, No Image\r\n");
    {
        const LockedFile spreadsheet(folder() + "WhatsLinked.csv");
        play(R"(
            click cmdWhatsLinked
            box "Could not open {folder}WhatsLinked.csv, Please ensure it is not already open in excel...[Permission denied]" OK
            expect-hidden List1
        )");
    }
    play("key Escape");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(namesLike("*.tmp").size(), 0U);
}

TEST_F(Tools, ExportCopiesAndChangesNothing) {
    constexpr std::string_view kLinks =
        R"(<images><p f1="A" f2="a.jpg" f3="created"/><p f1="B" f2="b1.jpg" f3="created"/></images>)";
    write("images.xml", kLinks);
    write("images\\a.jpg", "picture a");
    write("images\\b1.jpg", "picture b");
    write("export\\keep.txt", "");
    startHost({"A"});
    play(R"(
        wait frmQVI_Images
        click cmdExport
        box "Do you want to encrypt the images?" No
        wait frmBrowseGeneral
        type Text1 "{folder}export"
        click OKButton
        box "2 of 2 linked images were exported" OK
        wait frmQVI_Images
        expect List1 "a.jpg exported." "b1.jpg exported."
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("export\\Images\\b1.jpg"), "picture b");
    EXPECT_EQ(read("export\\Images\\a.jpg"), "picture a");
    EXPECT_EQ(read("images.xml"), kLinks);
    EXPECT_EQ(modified(), "");
}

TEST_F(Tools, CloseEndsALongRunAtOnceAndSavesWhatItHas) {
    // A code with an apostrophe becomes part of its search's expression, which then looks at every link: a run of
    // minutes on any machine, from files that are written and read in no time.
    const auto repeated = [](std::string_view text, int times) {
        std::string all;
        for (int i = 0; i < times; ++i) {
            all += text;
        }
        return all;
    };
    write("images.xml", "<images>" + repeated(R"(<p f1="A" f2="a.jpg"/>)", 20'000) + "</images>");
    write("images\\' or '-1.jpg", "");
    writePriceList("GEAR\r\n" + repeated("' or '\r\n", 20'000));
    write("images\\gear-1.jpg", "");
    startHost({"GEAR"});
    play(R"(
        wait frmQVI_Images
        click cmdAutoLink
        box "This option will browse a desired folder." OK
        wait frmBrowseGeneral
        click OKButton
        box "Press OK and wait a few minutes.." OK
        wait frmQVI_Images
        expect-visible prgTool
        expect-disabled cmdDelete
        expect List1 "AddedGEAR linked to image GEAR-1.JPG"
        click cmdCancel
        box "1 of 1 new images were linked to your priclist..." OK
    )");
    EXPECT_THAT(hostEnds(), StartsWith(std::string(kSuccess)));
    EXPECT_THAT(read("images.xml"), HasSubstr("GEAR-1.JPG"));
}

} // namespace
} // namespace end_to_end
