// Whole exchanges with a web service and through a proxy, in a host's process. The service is examples/supplier, the
// proxy one of the peers; both are started around this program.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

namespace end_to_end {
namespace {

using testing::HasSubstr;

std::string environment(const char* name) {
    const char* const value = std::getenv(name);
    EXPECT_NE(value, nullptr) << name << " is not set: is this run beside the service and the peers?";
    return value == nullptr ? "" : value;
}

class Exchange : public Shop {
protected:
    Exchange() {
        webAddress = environment("SUPPLIER_HTTP") + "/";
        setConnection("DialType", "Manual");
        write("images\\a.jpg", "picture");
        supplierIs("<behaviour/>");
        std::remove(supplierFile("images-1001.xml").c_str());
    }
    ~Exchange() override { supplierIs("<behaviour/>"); }

    // Links a picture, opens the window and logs in; the run is on its way then.
    void upload(const std::string& password = "secret") {
        startHost({"GEAR"});
        play(R"(
            wait frmQVI_Images
            click cmdbrowse
            pick "{folder}images\a.jpg"
            expect lImages a.jpg
            click cmdUpload
            wait frmQVI_sendreceive
            key Enter
            wait frmLogin
            type txtPassword )" +
             password + "\nkey Enter\n");
    }
    void leave() {
        play(R"(
            wait frmQVI_Images
            key Escape
        )");
        EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    }
    void expectSent() const {
        EXPECT_EQ(read("images.xml"), R"(<images><p f1="GEAR" f2="a.jpg"/></images>)");
        EXPECT_EQ(modified(), "");
        EXPECT_THAT(supplierHas(), HasSubstr(R"(<p f1="GEAR" f2="a.jpg")"));
    }
    void expectStillToBeSent() const {
        EXPECT_THAT(read("images.xml"), HasSubstr(R"(<p f1="GEAR" f2="a.jpg" f3="created"/>)"));
        EXPECT_EQ(modified(), "Saved");
    }

    // A file of the service's data folder, which is on the other side of drive Z.
    [[nodiscard]] static std::string supplierFile(const std::string& name) {
        std::string path = "Z:" + environment("SUPPLIER_DATA") + "/" + name;
        std::ranges::replace(path, '/', '\\');
        return path;
    }
    static void supplierIs(const std::string& behaviour) {
        std::ofstream(supplierFile("behaviour.xml"), std::ios::binary) << behaviour;
    }
    [[nodiscard]] static std::string supplierHas() {
        std::ifstream file(supplierFile("images-1001.xml"), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

TEST_F(Exchange, TheLinksReachTheSupplierAndTheMarksGo) {
    upload();
    play(R"(box "Send/Receive completed" OK)");
    leave();
    expectSent();
    const std::string trace = read("quorvantis_sendreceive.txt");
    EXPECT_THAT(trace, HasSubstr(R"(password="***")"));
    EXPECT_THAT(trace, HasSubstr("Sub SendReceive --> Post error code: 0\r\n"));
    EXPECT_THAT(trace, testing::Not(HasSubstr("SECRET")));
    EXPECT_THAT(trace, HasSubstr("Sub cmdOK_Click --> End of sendimagelinks210\r\n"));
}

TEST_F(Exchange, WhatTheSupplierRefusesStaysMarked) {
    supplierIs(R"(<behaviour><fail command="sendimagelinks210" error="Not today."/></behaviour>)");
    upload();
    play(R"(
        box "Not today." OK
        wait frmQVI_sendreceive
        expect lvCommands "+sendimagelinks210|Send image link modifications to server||Error" "-SendImageLinksAll210|Overwrite image links on server|| "
    )");
    supplierIs(R"(<behaviour><off message="Back at noon."/></behaviour>)");
    play(R"(
        key Enter
        wait frmLogin
        key Enter
        box "Back at noon." OK
        wait frmQVI_sendreceive
        key Escape
    )");
    leave();
    expectStillToBeSent();
}

TEST_F(Exchange, CancelEndsARequestThatWaits) {
    supplierIs(R"(<behaviour><wait milliseconds="20000"/></behaviour>)");
    upload();
    play(R"(
        wait frmQVI_sendreceive
        expect-text lProgress "Sending image links, please wait"
        expect-disabled cmdOK
        key Escape
        wait-closed frmQVI_sendreceive 3
    )");
    leave();
    expectStillToBeSent();
    EXPECT_THAT(read("quorvantis_sendreceive.txt"), HasSubstr(",Cancelled\r\n"));
}

TEST_F(Exchange, AWrongProxyIsPutRightInTheMiddleOfIt) {
    setConnection("UseProxy", "1");
    setConnection("FirewallType", "0");
    setConnection("ProxyServer", "proxy.invalid");
    upload();
    play(R"(
        wait frmMsgBox
        expect-text cmdButton2 "Dial Settings"
        click cmdButton2
        wait frmDial
        expect txtServer proxy.invalid
        type txtServer localhost
        type txtPort )" +
         environment("QVI_PEER_PROXY") + R"(
        click cmdOK
        box "Send/Receive completed" OK
    )");
    leave();
    expectSent();
    EXPECT_EQ(connection("ProxyServer"), "localhost");
}

} // namespace
} // namespace end_to_end
