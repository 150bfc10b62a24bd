// The host's view of the entry class: values in, a modal call, results out.
#include "entry/clsQVI_Link.h"

#include "base/late_bound.h"
#include "base/runtime_error.h"
#include "entry/environment.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_data_protection.h"
#include "fakes/fake_desktop.h"
#include "fakes/fake_file_system.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_network.h"
#include "fakes/fake_picture_decoder.h"
#include "fakes/fake_programs.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_system_info.h"
#include "fakes/scripted_cabinet_api.h"
#include "sendreceive_form/frmQVI_sendreceive.h"

#include <gtest/gtest.h>

namespace {

class clsQVI_LinkTest : public testing::Test {
protected:
    clsQVI_LinkTest() {
        files.addFolder("C:\\QV");
        files.addFolder("C:\\QV\\images");
        link.gQuorVantisPath = "C:\\QV\\";
        link.ProductCode = "ABC";
        link.gSettingString = "Shop";
        link.NewImageFile = "left over";
        link.DeleteLink = true;
    }
    images::frmQVI_Images& form() { return *environment.imageManager; }

    fakes::FakeDesktop desktop;
    fakes::FakeFileSystem files;
    fakes::FakeSettings settings;
    fakes::FakeClock clock;
    fakes::FakePictureDecoder pictures;
    fakes::FakeCodePage ansi;
    fakes::FakeLocale locale;
    fakes::FakeDataProtection protection;
    fakes::FakeNetwork network;
    fakes::FakePrograms programs;
    fakes::ScriptedCabinetApi cabinetApi;
    fakes::FakeSystemInfo system;
    entry::Environment environment{desktop,
                                   files,
                                   settings,
                                   clock,
                                   pictures,
                                   ansi,
                                   locale,
                                   protection,
                                   network,
                                   programs,
                                   cabinetApi,
                                   system,
                                   "C:\\Program Files\\QuorvantisImage"};
    entry::clsQVI_Link link{environment};
};

TEST_F(clsQVI_LinkTest, EveryShowFormStartsFreshAndHandsBackNothing) {
    desktop.whenShown("frmQVI_Images", [&] {
        EXPECT_EQ(form().caption(), "Link an image to ABC");
        EXPECT_EQ(form().gSettingString, "Shop");
        form().chkExactMatch.userClick();
        form().userKey(ui::key::kReturn);
    });
    link.ShowForm();
    EXPECT_EQ(link.NewImageFile, "");
    EXPECT_FALSE(link.DeleteLink);

    link.ProductCode = "DEF & Co";
    desktop.whenShown("frmQVI_Images", [&] {
        EXPECT_EQ(form().caption(), "Link an image to DEF & Co");
        EXPECT_FALSE(form().chkExactMatch.checked());
        form().userClose();
    });
    link.ShowForm();
    EXPECT_EQ(environment.imageManager, nullptr);
}

TEST_F(clsQVI_LinkTest, ShowFormSendReceiveLeavesTheValuesButNeverTheSettingsName) {
    settings.set("QuorVantis", "Main", "ImageModify", "Saved");
    files.addFile("C:\\QV\\images.xml", "<images/>");
    desktop.whenShown("frmQVI_sendreceive", [&] {
        auto& window = dynamic_cast<sendreceive::frmQVI_sendreceive&>(*desktop.shownForm());
        EXPECT_EQ(window.engine().lvCommands.rowCount(), 2U);
        EXPECT_EQ(base::toText(window.engine().session.Globals->get("gSettingString")), "");
        window.userClose();
    });
    link.ShowFormSendReceive();
    ASSERT_NE(environment.imageManager, nullptr);
    EXPECT_EQ(form().ProductCode, "ABC");
    EXPECT_EQ(form().gSettingString, "");
    EXPECT_FALSE(form().loaded());
    EXPECT_EQ(link.NewImageFile, "left over");

    // The next ShowForm takes the same form, then releases it.
    const images::frmQVI_Images* left = environment.imageManager.get();
    desktop.whenShown("frmQVI_Images", [&] {
        EXPECT_EQ(&form(), left);
        form().userKey(ui::key::kReturn);
    });
    link.ShowForm();
    EXPECT_EQ(environment.imageManager, nullptr);
}

TEST_F(clsQVI_LinkTest, CallsFromOutsideFailWhileAFormIsShown) {
    entry::clsQVI_Link other(environment);
    other.ProductCode = "OTHER";
    const auto expect400 = [&](auto call) {
        try {
            call();
            ADD_FAILURE() << "should have failed";
        } catch (const base::RuntimeError& e) {
            EXPECT_EQ(e.number(), base::error::kFormAlreadyDisplayed);
        }
    };
    desktop.whenShown("frmQVI_Images", [&] {
        expect400([&] { other.ShowForm(); });
        expect400([&] { link.ShowFormSendReceive(); });
        EXPECT_EQ(form().ProductCode, "ABC");
        desktop.whenShown("frmQVI_sendreceive", [&] {
            auto& window = dynamic_cast<sendreceive::frmQVI_sendreceive&>(*desktop.shownForm());
            EXPECT_EQ(base::toText(window.engine().session.Globals->get("gSettingString")), "Shop");
            window.userClose();
        });
        form().cmdUpload.userClick(); // the form's own button is inside
        form().userKey(ui::key::kReturn);
    });
    link.ShowForm();
}

TEST_F(clsQVI_LinkTest, AFailingHandlerFailsTheCallAndReleasesTheForm) {
    files.addFile("C:\\QV\\images.xml", "<rtf><p/></rtf>"); // another root: nothing can be linked
    desktop.whenShown("frmQVI_Images", [&] {
        desktop.whenPicking("C:\\QV\\images\\a.jpg");
        form().cmdbrowse.userClick();
    });
    try {
        link.ShowForm();
        FAIL() << "should have failed";
    } catch (const base::RuntimeError& e) {
        EXPECT_EQ(e.number(), base::error::kObjectNotSet);
        EXPECT_EQ(e.source(), "QuorvantisImage");
    }
    EXPECT_EQ(link.NewImageFile, "left over");
    EXPECT_TRUE(link.DeleteLink);
    EXPECT_EQ(environment.imageManager, nullptr);

    desktop.whenShown("frmQVI_Images", [&] { form().userKey(ui::key::kReturn); });
    link.ShowForm();
}

} // namespace
