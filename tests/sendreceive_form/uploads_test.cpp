// What the window's commands carry, as the server gets it, and what is left to send afterwards.
#include "fakes/send_receive_services.h"
#include "sendreceive_form/frmQVI_sendreceive.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace sendreceive {
namespace {

class UploadsTest : public testing::Test {
protected:
    UploadsTest() {
        services.files.addFolder("C:\\QV");
        services.settings.set("Shop", "Dialup", "DialType", "Manual");
    }
    // Logs in with the password A/>B, with the listed rows ticked, and gives what was posted.
    std::string send(const std::vector<std::size_t>& ticked, const std::string& answer = "<results/>") {
        services.network.requests.clear();
        services.network.willAnswer(answer);
        return run(ticked) ? services.network.requests.at(0).body : "";
    }
    bool run(const std::vector<std::size_t>& ticked) {
        frmQVI_sendreceive form(services.all, {"1001", "C:\\QV\\", "Shop", "http://supplier/"});
        services.desktop.whenShown("frmLogin", [this] {
            services.login.txtPassword.userText("a/>b");
            services.login.cmdOK.userClick();
        });
        services.desktop.whenShown("frmQVI_sendreceive", [&] {
            ui::ListView& list = form.engine().lvCommands;
            for (std::size_t row = 0; row < list.rowCount(); ++row) {
                list.setChecked(row, std::find(ticked.begin(), ticked.end(), row) != ticked.end());
            }
            form.engine().cmdOK.userClick();
            if (form.shown()) {
                form.userClose();
            }
        });
        form.load();
        form.showModal();
        return !services.network.requests.empty();
    }
    // The payload between the command's tags.
    static std::string payload(const std::string& body) {
        const std::size_t begin = body.find("lastdate=\"\">") + 12;
        EXPECT_TRUE(body.starts_with("<commands profile=\"1001\" password=\"A/&gt;B\"><command name=\"")) << body;
        EXPECT_TRUE(body.ends_with("</command></commands>")) << body;
        return body.substr(begin, body.size() - 21 - begin);
    }
    void completed() { services.desktop.whenAsked("Send/Receive completed"); }
    [[nodiscard]] std::string links() const { return services.files.contents("C:\\QV\\images.xml"); }

    fakes::SendReceiveServices services;
};

constexpr const char* kLinks =
    "<?xml version=\"1.0\" standalone=\"yes\"?>"
    "<images a='1'>own<p f1='A' f2='a.jpg'/><!-- c --><p f1='B' f2='b&lt;.jpg' f3='created'>"
    "x<q f3='y'>z</q><r/></p><g><p f1='D' f3=''/></g><p f1='C' f2='c.jpg' f3='deleted'/></images>";

TEST_F(UploadsTest, OnlyChangedLinksAreSentAndClearedOnceTheServerHasThem) {
    services.files.addFile("C:\\QV\\images.xml", kLinks);
    services.settings.set("QuorVantis", "Main", "ImageModify", "Saved");
    services.desktop.whenAsked("No");
    EXPECT_EQ(payload(send({0}, "<results error='No'/>")),
              "<images a=\"1\">own<p f1=\"B\" f2=\"b&lt;.jpg\" f3=\"created\">x<q f3=\"y\">z</q></p>"
              "<p f1=\"C\" f2=\"c.jpg\" f3=\"deleted\"/></images>");
    EXPECT_EQ(links(), kLinks) << "the server did not take them";
    EXPECT_EQ(services.settings.get("QuorVantis", "Main", "ImageModify"), "Saved");

    completed();
    static_cast<void>(send({0}));
    EXPECT_EQ(links(), "<?xml version=\"1.0\" standalone=\"yes\"?>\n<images a=\"1\">own<p f1=\"A\" f2=\"a.jpg\"/>"
                       "<!-- c --><p f1=\"B\" f2=\"b&lt;.jpg\">x<q f3=\"y\">z</q><r/></p><g><p f1=\"D\" f3=\"\"/></g>"
                       "</images>");
    EXPECT_EQ(services.settings.get("QuorVantis", "Main", "ImageModify"), "");
}

TEST_F(UploadsTest, AllLinksAreSentAsTheyStand) {
    for (const std::string declaration :
         {"<?xml version=\"1.0\" standalone=\"yes\"?>", "<?xml version=\"1.0\" encoding=\"iso-8859-1\"?>", ""}) {
        services.files.addFile("C:\\QV\\images.xml",
                               declaration + "<images><p f1='\xC3\xA9'/><p f3='deleted'/></images>");
        completed();
        const std::string accented = declaration.find("iso") == std::string::npos ? "\xC3\xA9" : "\xC3\x83\xC2\xA9";
        EXPECT_EQ(payload(send({0})), "<images><p f1=\"" + accented + "\"/><p f3=\"deleted\"/></images>")
            << declaration;
    }
}

TEST_F(UploadsTest, ProductGroupsAreSentFromWhereverTheyStand) {
    for (const std::string file : {"<?xml version='1.0'?><productgroups a='1'><g>x</g></productgroups>",
                                   "<x><productgroups a='1'><g>x</g></productgroups><productgroups/></x>"}) {
        services.files.addFile("C:\\QV\\productgroups.xml", file);
        services.settings.set("QuorVantis", "Main", "ProductGroups", "Saved");
        completed();
        EXPECT_EQ(payload(send({0})), "<productgroups a=\"1\"><g>x</g></productgroups>");
    }
    // The mark is gone now; ticked by hand the run ends with the store's error.
    services.desktop.whenAsked("Error in cmdOK_Click:Invalid procedure call or argument");
    EXPECT_NE(send({0}), "");
}

TEST_F(UploadsTest, NothingIsSentThatCannotBeRead) {
    services.settings.set("QuorVantis", "Main", "ImageModify", "Saved");
    services.files.addFile("C:\\QV\\images.xml", "<links/>");
    services.desktop.whenAsked("Error in cmdOK_Click:Object variable or With block variable not set");
    EXPECT_FALSE(run({0}));
    services.files.addFile("C:\\QV\\images.xml", "<images><p></images>");
    xml::XmlDocument broken;
    ASSERT_FALSE(broken.load("<images><p></images>"));
    for (const std::size_t row : {0U, 1U}) {
        services.desktop.whenAsked("Error in cmdOK_Click:" + broken.parseError());
        EXPECT_FALSE(run({row}));
    }
    EXPECT_EQ(links(), "<images><p></images>");
}

} // namespace
} // namespace sendreceive
