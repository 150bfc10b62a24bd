// The image manager's whole-list tools from the click to the file: messages, what is saved, stopping.
#include "base/runtime_error.h"
#include "images/image_manager_fixture.h"

#include <string>
#include <string_view>

namespace {

constexpr std::string_view kAutoLinkIntro = "This option will browse a desired folder. All JPG files \r\n"
                                            "in the folder will be linked to there respective products \r\n"
                                            "if the file name is the same as the product code.";
constexpr std::string_view kAutoLinkStart =
    "Any JPEG files in the folder which match product codes in QuorVantis will be linked\r\n"
    "Press OK and wait a few minutes..";
constexpr std::string_view kCleanUpQuestion =
    "This routine will clean all uneccesary links including images that have been linked more than once to the same "
    "image.\r\nArou you sure you want to continue...";

class WholeListToolsTest : public images::ImageManagerFixture {
protected:
    // The user goes along with auto-link's boxes and its folder picker.
    void autoLink(std::string_view closing) {
        desktop.whenAsked(kAutoLinkIntro);
        desktop.whenShown("frmBrowseGeneral", [&] { closeBrowse(true); });
        desktop.whenAsked(kAutoLinkStart);
        desktop.whenAsked(closing);
        form.cmdAutoLink.userClick();
    }
    // Enter in the folder list would open a folder.
    void closeBrowse(bool ok) {
        ui::Form& browse = *desktop.shownForm();
        browse.userFocus(*browse.find("OKButton"));
        browse.userKey(ok ? ui::key::kReturn : ui::key::kEscape);
    }
};

TEST_F(WholeListToolsTest, AutoLinkSavesAndMarksAndSaysHowMany) {
    files.addFile("C:\\pl.dat", "ABC\r\nDEF\r\n");
    files.addFile("C:\\QV\\images\\abc-1.jpg", "");
    files.addFile("C:\\QV\\images\\def_1.jpg", "");
    show([&] {
        autoLink("2 of 2 new images were linked to your priclist...");
        EXPECT_FALSE(form.List1.visible());
        EXPECT_EQ(form.caption(), "Link an image to ABC");
        EXPECT_TRUE(form.cmdAutoLink.enabled());
    });
    EXPECT_EQ(files.contents("C:\\QV\\images.xml"), "<images><p f1=\"ABC\" f2=\"ABC-1.JPG\" f3=\"created\"/><p "
                                                    "f1=\"DEF\" f2=\"DEF_1.JPG\" f3=\"created\"/></images>\r\n");
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(WholeListToolsTest, AutoLinkWithoutAPriceListOrWithCancelWritesNothing) {
    show([&] {
        autoLink("0 of 0 new images were linked to your priclist...");
        desktop.whenAsked(kAutoLinkIntro);
        desktop.whenShown("frmBrowseGeneral", [&] { closeBrowse(false); });
        form.cmdAutoLink.userClick();
    });
    EXPECT_TRUE(files.folderExists("C:\\QV\\images")); // made on the way
    EXPECT_FALSE(files.hasFile("C:\\QV\\images.xml"));
    EXPECT_EQ(imageModify(), "");
}

TEST_F(WholeListToolsTest, AutoLinkThatCannotSaveCountsAsIfItHad) {
    files.addFile("C:\\pl.dat", "ABC");
    files.addFile("C:\\QV\\images\\abc_1.jpg", "");
    files.addFile("C:\\QV\\images.xml", "<images/>");
    files.setReadOnly("C:\\QV\\images.xml", true);
    show([&] {
        form.chkExactMatch.userClick();
        autoLink("1 of 1 new images were linked to your priclist...");
    });
    EXPECT_EQ(files.contents("C:\\QV\\images.xml"), "<images/>");
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(WholeListToolsTest, ClosingEndsARunAtItsNextItemAndSavesWhatItHas) {
    files.addFile("C:\\pl.dat", "A\nB\nC\n");
    for (const char* name : {"a1.jpg", "b1.jpg", "c1.jpg"}) {
        files.addFile(std::string("C:\\QV\\images\\") + name, "");
    }
    desktop.whenShown("frmQVI_Images", [&] {
        desktop.atDoEvents(3, [&] {
            EXPECT_FALSE(form.cmdDelete.enabled());
            EXPECT_FALSE(form.chkExactMatch.enabled());
            EXPECT_EQ(form.focused(), &form.cmdCancel);
            EXPECT_EQ(form.caption(), "Searching for image for product code B");
            form.cmdCancel.userClick();
        });
        autoLink("1 of 1 new images were linked to your priclist...");
    });
    form.load();
    form.showModal();
    EXPECT_EQ(files.contents("C:\\QV\\images.xml"), "<images><p f1=\"A\" f2=\"A1.JPG\" f3=\"created\"/></images>\r\n");
}

TEST_F(WholeListToolsTest, CleanUpLivesInMemoryUntilSomethingSaves) {
    constexpr std::string_view kBefore = R"(<images><p f1="A" f2="a.jpg"/><p f1="B" f2="b1.jpg"/></images>)";
    files.addFile("C:\\QV\\images.xml", kBefore);
    files.addFolder("C:\\QV\\images");
    show([&] {
        desktop.whenAsked(kCleanUpQuestion, ui::Answer::No);
        form.cmdCleanUp.userClick();
        desktop.whenAsked(kCleanUpQuestion, ui::Answer::Yes);
        form.cmdCleanUp.userClick();
        EXPECT_EQ(files.contents("C:\\QV\\images.xml"), kBefore);
        EXPECT_EQ(imageModify(), "");
        EXPECT_FALSE(form.List1.visible());
        desktop.whenPicking("C:\\QV\\images\\new.jpg");
        form.cmdbrowse.userClick();
    });
    EXPECT_EQ(files.contents("C:\\QV\\images.xml"),
              "<images><p f1=\"B\" f2=\"b1.jpg\"/><p f1=\"ABC\" f2=\"new.jpg\" f3=\"created\"/></images>\r\n");
}

TEST_F(WholeListToolsTest, ReportsAreWrittenInAnsiAndStayInTheList) {
    files.addFile("C:\\QV\\pltemp.dat", "caf\xE9\r\nX");
    files.addFolder("C:\\QV\\images");
    show([&] {
        desktop.whenAsked("Finished...\r\nResults also in C:\\QV\\WhatsLinked.csv");
        form.cmdWhatsLinked.userClick();
        EXPECT_EQ(form.List1.items().back(), "X: has no image.");
        EXPECT_TRUE(form.List1.visible());
        EXPECT_TRUE(form.cmdWhatsNotLinked.visible());

        form.CheckRTF.userClick();
        files.addFile("C:\\QV\\pltemp2.dat", "X,thing");
        desktop.whenAsked("Finished...\r\nResults also in C:\\QV\\WhatsNotLinked.csv");
        form.cmdWhatsNotLinked.userClick();
    });
    EXPECT_EQ(files.contents("C:\\QV\\WhatsLinked.csv"), "caf\xE9,No Image, No RTF\r\nX,No Image, No RTF\r\n");
    EXPECT_EQ(files.contents("C:\\QV\\WhatsNotLinked.csv"), "X,thing, No Image\r\n");
    EXPECT_EQ(imageModify(), "");
}

TEST_F(WholeListToolsTest, AReportThatCannotBeWrittenSaysWhyAndKeepsTheOldOne) {
    files.addFile("C:\\QV\\pltemp.dat", "X");
    files.addFile("C:\\QV\\WhatsLinked.csv", "old");
    show([&] {
        files.lock("C:\\QV\\WhatsLinked.csv");
        desktop.whenAsked("Could not open C:\\QV\\WhatsLinked.csv, Please ensure it is not already open in "
                          "excel...[Permission denied]");
        form.cmdWhatsLinked.userClick();
        files.unlock("C:\\QV\\WhatsLinked.csv");
        EXPECT_FALSE(form.List1.visible());
        EXPECT_TRUE(form.CheckRTF.visible());

        files.failWrite(1);
        desktop.whenAsked("Could not open C:\\QV\\WhatsLinked.csv, Please ensure it is not already open in "
                          "excel...[Disk full]");
        form.cmdWhatsLinked.userClick();
    });
    EXPECT_EQ(files.contents("C:\\QV\\WhatsLinked.csv"), "old");
}

TEST_F(WholeListToolsTest, ExportCopiesEachLinkedPictureOnce) {
    files.addFile("C:\\QV\\images\\a.jpg", "A");
    files.addFile("C:\\QV\\images\\sub\\b.jpg", "B");
    files.addFile("C:\\QV\\secret.jpg", "S");
    files.addFile(
        "C:\\QV\\images.xml",
        R"(<images><p f1="A" f2="a.jpg"/><p f1="B" f2="A.JPG"/><p f1="B" f2="sub\b.jpg"/><p f1="C" f2="gone.jpg"/>)"
        R"(<p f1="D" f2="..\secret.jpg"/><p f1="E" f2="a.jpg" f3="deleted"/></images>)");
    show([&] {
        desktop.whenAsked("Do you want to encrypt the images?", ui::Answer::Yes);
        desktop.whenAsked("The encryption component is not installed. No images were exported.");
        form.cmdExport.userClick();

        desktop.whenAsked("Do you want to encrypt the images?", ui::Answer::No);
        desktop.whenShown("frmBrowseGeneral", [&] { closeBrowse(true); });
        desktop.whenAsked("2 of 4 linked images were exported to C:\\Images.");
        form.cmdExport.userClick();
    });
    EXPECT_EQ(files.contents("C:\\Images\\a.jpg"), "A");
    EXPECT_EQ(files.contents("C:\\Images\\sub\\b.jpg"), "B");
    EXPECT_FALSE(files.hasFile("C:\\secret.jpg"));
}

} // namespace
