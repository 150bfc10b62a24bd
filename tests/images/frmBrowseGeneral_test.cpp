// The folder picker as its user and its caller see it.
#include "images/frmBrowseGeneral.h"

#include "fakes/fake_desktop.h"
#include "fakes/fake_file_system.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Items = std::vector<std::string>;

class frmBrowseGeneralTest : public testing::Test {
protected:
    frmBrowseGeneralTest() {
        files.addFile("C:\\shop\\b.jpg", "");
        files.addFile("C:\\shop\\A.jpg", "");
        files.addFolder("C:\\shop\\sub");
    }
    void show(const std::function<void()>& user) {
        desktop.whenShown("frmBrowseGeneral", user);
        form.load();
        form.setFolder("C:\\shop");
        form.showModal();
    }

    fakes::FakeDesktop desktop;
    fakes::FakeFileSystem files;
    images::frmBrowseGeneral form{desktop, files};
};

TEST_F(frmBrowseGeneralTest, WalksFoldersAndPicksFiles) {
    show([&] {
        EXPECT_EQ(form.Drive1.selectedText(), "C:");
        EXPECT_EQ(form.Dir1.items(), (Items{"C:\\", "   shop", "      SUB"}));
        EXPECT_EQ(form.Dir1.selected(), 1U);
        EXPECT_EQ(form.File1.items(), (Items{"A.jpg", "b.jpg"}));
        EXPECT_EQ(form.Text1.text(), "C:\\shop\\");
        EXPECT_EQ(form.focused(), &form.Dir1);

        form.Dir1.userSelect(2); // a single click only selects
        EXPECT_EQ(form.Text1.text(), "C:\\shop\\");
        form.userKey(ui::key::kReturn); // in the folder list it opens
        EXPECT_EQ(form.Text1.text(), "C:\\shop\\SUB\\");
        EXPECT_TRUE(form.File1.items().empty());
        form.Dir1.userDoubleClick(0);
        EXPECT_EQ(form.Text1.text(), "C:\\"); // a root has its backslash already
        form.Dir1.userDoubleClick(1);

        form.File1.userSelect(1);
        EXPECT_EQ(form.BrowseFileName, "b.jpg");
        EXPECT_EQ(form.chosenFolder(), "C:\\SHOP");
        form.OKButton.userClick();
    });
    EXPECT_FALSE(form.BrowseCancelled);
}

TEST_F(frmBrowseGeneralTest, EveryOtherWayOutIsCancel) {
    const struct {
        const char* way;
        std::function<void()> leave;
    } kWays[] = {{"Cancel", [&] { form.CancelButton.userClick(); }},
                 {"Escape", [&] { form.userKey(ui::key::kEscape); }},
                 {"X", [&] { form.userClose(); }},
                 {"Enter on Cancel", [&] {
                      form.userFocus(form.CancelButton);
                      form.userKey(ui::key::kReturn);
                  }}};
    for (const auto& row : kWays) {
        SCOPED_TRACE(row.way);
        show([&] {
            form.File1.userSelect(0);
            row.leave();
        });
        EXPECT_TRUE(form.BrowseCancelled);
        form.unload();
    }
}

TEST_F(frmBrowseGeneralTest, LeavingAPathThatEndsInABackslashIsRefused) {
    show([&] {
        form.userFocus(form.Text1);
        desktop.whenAsked("You must have a file name");
        form.userFocus(form.OKButton); // also the way a mouse click on OK begins
        EXPECT_EQ(form.focused(), &form.Text1);
        form.Text1.userText("C:\\shop\\x");
        form.userFocus(form.File1);
        EXPECT_EQ(form.focused(), &form.File1);

        form.Text1.userText("C:\\shop\\");
        form.userFocus(form.Text1);
        form.userFocus(form.CancelButton); // always works
        form.userFocus(form.Text1);
        form.userKey(ui::key::kReturn); // OK without leaving the text
    });
    EXPECT_FALSE(form.BrowseCancelled);
    EXPECT_EQ(form.chosenFolder(), "C:\\shop");
}

TEST_F(frmBrowseGeneralTest, TypedPathsAreTakenApart) {
    show([&] {
        form.Text1.userText("C:\\some\\name.jpg");
        EXPECT_EQ(form.BrowseFileName, "name.jpg");
        desktop.whenAsked("invalid file name");
        form.Text1.userText("\\name");
        EXPECT_EQ(form.BrowseFileName, "name.jpg"); // unchanged
        form.Text1.userText("bare");
        EXPECT_EQ(form.BrowseFileName, "bare");
        EXPECT_EQ(form.chosenFolder(), "");
        form.Text1.userText("C:\\shop");
        EXPECT_EQ(form.chosenFolder(), "C:\\shop");
        form.Text1.userText("C:\\shop\\new");
        EXPECT_EQ(form.chosenFolder(), "C:\\shop");
        form.OKButton.userClick();
    });
}

TEST_F(frmBrowseGeneralTest, AFolderThatIsNotReadyChangesNothing) {
    show([&] {
        desktop.whenAsked("Device unavailable");
        form.setFolder("C:\\gone");
        EXPECT_EQ(form.Text1.text(), "C:\\shop\\");
        EXPECT_EQ(form.Drive1.selectedText(), "C:");
        form.CancelButton.userClick();
    });
}

} // namespace
