// The image manager as its user sees it: clicks, keys and dialogs in, files and settings out.
#include "base/runtime_error.h"
#include "images/image_manager_fixture.h"

#include <string>
#include <string_view>
#include <vector>

namespace {

using Items = std::vector<std::string>;

constexpr std::string_view kTwoLinks =
    R"(<images><p f1="ABC" f2="a.jpg" f3="created"/><p f1="X" f2="x.jpg" f3="created"/>)"
    R"(<p f1="ABC" f2="gone.jpg" f3="deleted"/><p f1="ABC" f2="b.jpg" f3="created"/></images>)";

class frmQVI_ImagesTest : public images::ImageManagerFixture {
protected:
    frmQVI_ImagesTest() {
        files.addFolder("C:\\QV\\images");
        files.addFolder("C:\\QV\\rtf");
    }

    void givenImages(std::string_view xml) { files.addFile("C:\\QV\\images.xml", xml); }
    std::string images() { return files.readFile("C:\\QV\\images.xml"); }
    std::string specifications() { return files.readFile("C:\\QV\\rtf.xml"); }
};

TEST_F(frmQVI_ImagesTest, ListsTheProductsLinksInDocumentOrderWithoutDeletedOnes) {
    givenImages(kTwoLinks);
    files.addFile("C:\\QV\\rtf.xml", R"(<rtf><p f1="ABC" f2="a.rtf" f3="created" f4="Sheet"/></rtf>)");
    form.load();
    EXPECT_EQ(form.lImages.items(), (Items{"a.jpg", "b.jpg"}));
    EXPECT_EQ(form.lRTF.items(), Items{"a.rtf"});
    EXPECT_EQ(form.caption(), "Link an image to ABC");
    EXPECT_EQ(form.fraImages.text(), "Step 2 - Link an image to ABC");
    EXPECT_FALSE(form.List1.visible());
    EXPECT_EQ(imageModify(), "");
}

TEST_F(frmQVI_ImagesTest, AddedPictureIsListedSavedAndMarked) {
    show([&] {
        desktop.whenPicking("C:\\QV\\images\\sub\\new.jpg ");
        form.cmdbrowse.userClick();
    });
    EXPECT_EQ(desktop.lastPick().initialFolder, "C:\\QV\\images");
    EXPECT_EQ(desktop.lastPick().filter, "");
    EXPECT_EQ(form.lImages.items(), Items{"sub\\new.jpg"});
    EXPECT_EQ(images(), "<images><p f1=\"ABC\" f2=\"sub\\new.jpg\" f3=\"created\"/></images>\r\n");
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(frmQVI_ImagesTest, AddingALinkedPictureAgainShowsItTwiceButWritesNothing) {
    givenImages(kTwoLinks);
    show([&] {
        desktop.whenPicking("C:\\QV\\images\\a.jpg");
        form.cmdbrowse.userClick();
        desktop.whenPicking("C:\\QV\\images\\gone.jpg"); // a link marked deleted still counts as existing
        form.cmdbrowse.userClick();
    });
    EXPECT_EQ(form.lImages.items(), (Items{"a.jpg", "b.jpg", "a.jpg", "gone.jpg"}));
    EXPECT_EQ(images(), kTwoLinks);
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(frmQVI_ImagesTest, CancelledOrImpossibleAddsChangeNothing) {
    show([&] {
        desktop.whenPicking("");
        form.cmdbrowse.userClick();
        desktop.whenPicking("");
        form.cmdAddSpec.userClick();
        desktop.whenPicking("C:\\QV\\rtf\\not there.rtf");
        form.cmdAddSpec.userClick();
    });
    EXPECT_TRUE(form.lImages.items().empty());
    EXPECT_TRUE(form.lRTF.items().empty());
    EXPECT_FALSE(files.fileExists("C:\\QV\\images.xml"));
    EXPECT_FALSE(files.fileExists("C:\\QV\\rtf.xml"));
    EXPECT_EQ(imageModify(), "");
}

TEST_F(frmQVI_ImagesTest, AddWithoutAnImagesFolderSaysWhereItShouldBe) {
    form.gQuorVantisPath = "C:\\QV"; // a missing final backslash is not repaired
    show([&] {
        desktop.whenAsked("Please create an image folder and place your images in that folder.\r\n"
                          "The folder should be called: C:\\QVimages",
                          ui::Answer::Ok, ui::Icon::Critical);
        form.cmdbrowse.userClick();
    });
    EXPECT_EQ(desktop.lastTitle(), "QuorvantisImage");
    EXPECT_EQ(imageModify(), "");
}

TEST_F(frmQVI_ImagesTest, SpecificationIsLinkedWithItsDescriptionEachTime) {
    files.addFile("C:\\QV\\rtf\\a.pdf", "%PDF");
    show([&] {
        desktop.whenPicking("C:\\QV\\rtf\\a.pdf");
        desktop.whenPrompted("Enter a description", "Data sheet");
        form.cmdAddSpec.userClick();
        desktop.whenPicking("C:\\QV\\rtf\\a.pdf");
        desktop.whenPrompted("Enter a description", ""); // cancelled
        form.cmdAddSpec.userClick();
    });
    EXPECT_EQ(desktop.lastTitle(), "Description");
    EXPECT_EQ(desktop.lastPick().fileName, "*");
    EXPECT_EQ(form.lRTF.items(), (Items{"a.pdf (Data sheet)", "a.pdf ()"}));
    EXPECT_EQ(specifications(), "<rtf><p f1=\"ABC\" f2=\"a.pdf\" f3=\"created\" f4=\"Data sheet\"/>"
                                "<p f1=\"ABC\" f2=\"a.pdf\" f3=\"created\" f4=\"\"/></rtf>\r\n");
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(frmQVI_ImagesTest, AddSpecificationMakesItsFolder) {
    form.gQuorVantisPath = "C:\\QV\\images\\"; // here no rtf folder exists yet
    show([&] {
        desktop.whenPicking("");
        form.cmdAddSpec.userClick();
    });
    EXPECT_TRUE(files.folderExists("C:\\QV\\images\\rtf"));
}

TEST_F(frmQVI_ImagesTest, FreshSpecificationCanBeDeletedOnlyAfterTheListsAreRebuilt) {
    files.addFile("C:\\QV\\rtf\\a.rtf", "{}");
    show([&] {
        desktop.whenPicking("C:\\QV\\rtf\\a.rtf");
        desktop.whenPrompted("Enter a description", "Sheet");
        form.cmdAddSpec.userClick();
        form.lRTF.userSelect(0);
        form.cmdDeletSpec.userClick(); // "a.rtf (Sheet)" is no file of a link: only the lists are rebuilt
        EXPECT_EQ(form.lRTF.items(), Items{"a.rtf"});
        form.lRTF.userSelect(0);
        form.cmdDeletSpec.userClick();
    });
    EXPECT_TRUE(form.lRTF.items().empty());
    EXPECT_EQ(specifications(), "<rtf/>");
}

TEST_F(frmQVI_ImagesTest, DeleteRemovesTheSelectedLinkAndRebuildsBothLists) {
    givenImages(kTwoLinks);
    show([&] {
        form.lImages.userSelect(1);
        form.cmdDelete.userClick();
        EXPECT_EQ(form.lImages.items(), Items{"a.jpg"});
        EXPECT_FALSE(form.lImages.selected());
    });
    EXPECT_EQ(images(), R"(<images><p f1="ABC" f2="a.jpg" f3="created"/><p f1="X" f2="x.jpg" f3="created"/>)"
                        "<p f1=\"ABC\" f2=\"gone.jpg\" f3=\"deleted\"/></images>");
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(frmQVI_ImagesTest, DeleteWithoutSelectionKeepsTheLinksButMarksThemModified) {
    givenImages(kTwoLinks);
    show([&] { form.cmdDelete.userClick(); });
    EXPECT_EQ(form.lImages.items(), (Items{"a.jpg", "b.jpg"}));
    EXPECT_EQ(images(), kTwoLinks);
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(frmQVI_ImagesTest, FailingDeleteSaysNothingAndTheLinkComesBack) {
    givenImages(kTwoLinks);
    files.lock("C:\\QV\\images.xml");
    form.load();
    files.unlock("C:\\QV\\images.xml");
    EXPECT_TRUE(form.lImages.items().empty());
    form.unload();

    show([&] {
        files.setReadOnly("C:\\QV\\images.xml", true);
        form.lImages.userSelect(0);
        form.cmdDelete.userClick();
    });
    EXPECT_EQ(form.lImages.items(), (Items{"a.jpg", "b.jpg"}));
    EXPECT_EQ(imageModify(), "Saved");
}

TEST_F(frmQVI_ImagesTest, FailingAddEndsTheDialogWithTheErrorAndKeepsTheFile) {
    givenImages(kTwoLinks);
    desktop.whenShown("frmQVI_Images", [&] {
        files.setReadOnly("C:\\QV\\images.xml", true);
        desktop.whenPicking("C:\\QV\\images\\new.jpg");
        form.cmdbrowse.userClick();
    });
    form.load();
    try {
        form.showModal();
        FAIL() << "the host should see the error";
    } catch (const base::RuntimeError& e) {
        EXPECT_EQ(e.number(), base::error::kPathFileAccess);
    }
    EXPECT_FALSE(form.shown());
    EXPECT_EQ(images(), kTwoLinks);
    EXPECT_EQ(imageModify(), "Saved"); // set before the save, as every add does
}

TEST_F(frmQVI_ImagesTest, CodeWithAnApostropheOpensEmptyAndFailsOnAdd) {
    givenImages(kTwoLinks);
    form.ProductCode = "O'NEIL";
    desktop.whenShown("frmQVI_Images", [&] {
        EXPECT_TRUE(form.lImages.items().empty());
        form.cmdDelete.userClick(); // ignores the invalid search
        desktop.whenPicking("C:\\QV\\images\\new.jpg");
        form.cmdbrowse.userClick();
    });
    form.load();
    EXPECT_THROW(form.showModal(), base::RuntimeError);
    EXPECT_EQ(images(), kTwoLinks);
}

TEST_F(frmQVI_ImagesTest, LinksThatCouldNotBeReadAreKeptAsideByTheFirstSave) {
    givenImages(kTwoLinks);
    files.lock("C:\\QV\\images.xml");
    form.load();
    files.unlock("C:\\QV\\images.xml");
    clock.set({.year = 2026, .month = 11, .day = 15, .hour = 19, .minute = 8, .second = 12});
    show([&] {
        desktop.whenPicking("C:\\QV\\images\\new.jpg");
        form.cmdbrowse.userClick();
    });
    EXPECT_EQ(images(), "<images><p f1=\"ABC\" f2=\"new.jpg\" f3=\"created\"/></images>\r\n");
    EXPECT_EQ(files.readFile("C:\\QV\\images.unreadable-20261115_190812.xml"), kTwoLinks);
}

TEST_F(frmQVI_ImagesTest, EveryWayOfClosingEndsTheDialog) {
    const struct {
        const char* way;
        std::function<void()> close;
    } kWays[] = {{"Enter", [&] { EXPECT_EQ(form.userKey(ui::key::kReturn), 0); }},
                 {"Escape", [&] { EXPECT_EQ(form.userKey(ui::key::kEscape), 0); }},
                 {"Close", [&] { form.cmdCancel.userClick(); }},
                 {"X", [&] { form.userClose(); }}};
    for (const auto& row : kWays) {
        SCOPED_TRACE(row.way);
        desktop.whenShown("frmQVI_Images", row.close);
        form.showModal();
        EXPECT_EQ(form.NewImageFile, "");
    }
    EXPECT_EQ(form.userKey('x'), 'x');
}

TEST_F(frmQVI_ImagesTest, PreviewFollowsTheSelectionAndNeverComplains) {
    givenImages(kTwoLinks);
    pictures.add("C:\\QV\\images\\a.jpg", 2, 1);
    show([&] {
        EXPECT_EQ(form.picPreview.picture(), nullptr);
        form.lImages.userSelect(0);
        ASSERT_NE(form.picPreview.picture(), nullptr);
        EXPECT_EQ(form.picPreview.picture()->width, 2);
        form.lImages.userSelect(1); // no such file
        EXPECT_EQ(form.picPreview.picture(), nullptr);
        EXPECT_EQ(form.picPreview.text(), "No preview available.");
        form.cmdDelete.userClick(); // nothing is selected afterwards
        EXPECT_EQ(form.picPreview.text(), "Select a linked picture to see it here.");
    });
}

} // namespace
