#include "windows/end_to_end/upload.h"

#include <gmock/gmock.h>

#include <cstdio>

namespace end_to_end {
namespace {

using testing::HasSubstr;

// As a word of a script.
std::string quoted(const std::string& text) {
    std::string word;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text.compare(i, 2, "\r\n") == 0) {
            word += "{n}";
            ++i;
        } else {
            word += text[i];
        }
    }
    return "\"" + word + "\"";
}

} // namespace

Upload::Upload() {
    webAddress = environment("SUPPLIER_HTTP") + "/";
    setConnection("DialType", "Manual");
    setSupplierBehaviour("<behaviour/>");
    std::remove(onDrive(supplierFile("images-1001.xml")).c_str());
}

Upload::~Upload() {
    setSupplierBehaviour("<behaviour/>");
}

void Upload::link(const std::string& picture) {
    write("images\\" + picture, "picture");
    play("wait frmQVI_Images\nclick cmdbrowse\npick \"{folder}images\\" + picture + "\"\n");
}

void Upload::send(const std::string& password) {
    play(R"(
        wait frmQVI_Images
        click cmdUpload
        wait frmQVI_sendreceive
        key Enter
        wait frmLogin
        type txtPassword )" +
         password + "\nkey Enter\n");
}

void Upload::sendAgain() {
    play(R"(
        wait frmQVI_sendreceive
        key Enter
        wait frmLogin
        key Enter
    )");
}

void Upload::upload(const std::string& password) {
    startHost({"GEAR"});
    link("a.jpg");
    play("expect lImages a.jpg");
    send(password);
}

void Upload::leave() {
    play(R"(
        wait frmQVI_Images
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
}

std::string Upload::expectBox(const std::string& text) {
    play("wait-dialog box");
    const ErrorFile file = takeErrorFile();
    play("box " + quoted(text + file.path) + " OK");
    expectFailureShown();
    return file.bytes;
}

std::string Upload::expectMessage(const std::string& text, bool offersSettings) {
    play("wait frmMsgBox");
    const ErrorFile file = takeErrorFile();
    const std::string help = offersSettings ? "visible" : "hidden";
    play("expect-text lblMessage " + quoted(text + file.path) + "\nexpect-" + help + " cmdButton2\nexpect-" + help +
         " cmdButton3\nclick cmdButton1");
    expectFailureShown();
    return file.bytes;
}

void Upload::expectFailureShown() {
    play(R"(
        wait frmQVI_sendreceive
        expect-enabled cmdOK
        expect lvCommands "+sendimagelinks210|Send image link modifications to server||Error" "-SendImageLinksAll210|Overwrite image links on server|| "
    )");
}

void Upload::expectCompleted() {
    play(R"(
        box "Send/Receive completed" OK
        wait-closed frmQVI_sendreceive
    )");
}

Upload::ErrorFile Upload::takeErrorFile() {
    const std::vector<std::string> names = namesLike("errors\\*.html");
    if (names.empty()) {
        return {};
    }
    EXPECT_EQ(names.size(), 1U);
    const std::string name = "errors\\" + names.front();
    ErrorFile file{folder() + name, read(name)};
    std::remove(file.path.c_str());
    return file;
}

void Upload::expectSent(const std::string& picture) const {
    const std::string link = R"(<p f1="GEAR" f2=")" + picture + "\"";
    EXPECT_THAT(read("images.xml"), HasSubstr(link + "/>"));
    EXPECT_THAT(read("images.xml"), testing::Not(HasSubstr("f3=")));
    EXPECT_EQ(modified(), "");
    EXPECT_THAT(supplierHas(), HasSubstr(link));
}

void Upload::expectStillToBeSent(const std::string& picture) const {
    EXPECT_THAT(read("images.xml"), HasSubstr(R"(<p f1="GEAR" f2=")" + picture + R"(" f3="created"/>)"));
    EXPECT_EQ(modified(), "Saved");
}

std::string Upload::supplierHas(const std::string& name) {
    return contentsOf(supplierFile(name));
}

} // namespace end_to_end
