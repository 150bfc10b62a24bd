#include "sendreceive_form/frmQVI_sendreceive.h"

#include "fakes/send_receive_services.h"

#include <gtest/gtest.h>

#include <string>

namespace sendreceive {
namespace {

class frmQVI_sendreceiveTest : public testing::Test {
protected:
    frmQVI_sendreceiveTest() { services.files.addFolder("C:\\QV"); }

    fakes::SendReceiveServices services;
};

std::string command(const std::string& name, const std::string& text, const std::string& checked) {
    return "<command name=\"" + name + "\" object=\"Transfer\" displaytext=\"" + text +
           "\" required=\"no\" checked=\"" + checked +
           "\" lastdateaccountspecific=\"no\" show=\"yes\" order=\"5\" forcedownload=\"false\"/>";
}

TEST_F(frmQVI_sendreceiveTest, OffersWhatTheShopHas) {
    const std::string changes = command("sendimagelinks210", "Send image link modifications to server", "yes");
    const std::string all = command("SendImageLinksAll210", "Overwrite image links on server", "no");
    const std::string groups = command("sendproductgroups210", "Send product groups to server", "no");
    const std::string changedGroups = command("sendproductgroups210", "Send product groups to server", "yes");
    const struct {
        bool links;
        std::string imageModify;
        bool productGroups;
        std::string groupsSaved;
        std::string expected;
    } cases[] = {
        {false, "Saved", false, "Saved", "<commands profile=\"10&amp;01\"/>"},
        {true, "", false, "", "<commands profile=\"10&amp;01\">" + all + "</commands>"},
        {true, "saved", true, "saved", "<commands profile=\"10&amp;01\">" + all + groups + "</commands>"},
        {true, "Saved", true, "Saved",
         "<commands profile=\"10&amp;01\">" + changes + all + changedGroups + "</commands>"},
    };
    for (const auto& c : cases) {
        fakes::SendReceiveServices shop;
        shop.files.addFolder("C:\\QV");
        if (c.links) {
            shop.files.addFile("C:\\QV\\images.xml", "<images/>");
        }
        if (c.productGroups) {
            shop.files.addFile("C:\\QV\\productgroups.xml", "<productgroups/>");
        }
        shop.settings.set("QuorVantis", "Main", "ImageModify", c.imageModify);
        shop.settings.set("QuorVantis", "Main", "ProductGroups", c.groupsSaved);
        frmQVI_sendreceive form(shop.all, {"10&01", "C:\\QV\\", "Shop", "http://supplier/"});
        form.load();
        EXPECT_EQ(form.engine().domCommands()->xml(), c.expected);
        EXPECT_EQ(form.engine().session.sWebAddress, "http://supplier/");
        EXPECT_TRUE(form.engine().cmdOK.enabled());
    }
}

TEST_F(frmQVI_sendreceiveTest, ClosesWhenThePersonCancels) {
    frmQVI_sendreceive form(services.all, {"1001", "C:\\QV\\", "", ""});
    const auto closesBy = [&](const std::function<void()>& act) {
        services.desktop.whenShown("frmQVI_sendreceive", act);
        form.showModal();
        EXPECT_FALSE(form.loaded());
    };
    closesBy([&] { form.engine().cmdCancel.userClick(); });
    closesBy([&] { form.userKey(ui::key::kEscape); });
    closesBy([&] { form.userClose(); });
}

TEST_F(frmQVI_sendreceiveTest, AFailedLoadLeavesItOpenWithNothingToRun) {
    services.desktop.whenAsked("Error in frmSendReceive.Load:Invalid procedure call or argument");
    frmQVI_sendreceive form(services.all, {"\x01", "C:\\QV\\", "", ""}); // no document can hold that
    form.load();
    EXPECT_FALSE(form.engine().cmdOK.enabled());
    EXPECT_EQ(form.engine().lvCommands.rowCount(), 0U);
}

} // namespace
} // namespace sendreceive
