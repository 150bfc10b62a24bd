// The send/receive window in a host's process, opened from the image manager and worked by keys.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

using SendReceive = Shop;

TEST_F(SendReceive, TheUploadButtonOffersTheLinksAndAsksForThePassword) {
    write("productgroups.xml", "<productgroups/>");
    write("images\\a.jpg", "picture");
    startHost({"GEAR"});
    play(R"(
        wait frmQVI_Images
        click cmdbrowse
        pick "{folder}images\a.jpg"
        expect lImages a.jpg
        click cmdUpload
        wait frmQVI_sendreceive
        expect lvCommands "+sendimagelinks210|Send image link modifications to server|| " "-SendImageLinksAll210|Overwrite image links on server|| " "-sendproductgroups210|Send product groups to server|| "
        expect-focus lvCommands
        key Down Space
        expect lvCommands "+sendimagelinks210|Send image link modifications to server|| " "+SendImageLinksAll210|Overwrite image links on server|| " "-sendproductgroups210|Send product groups to server|| "
        key Enter
        wait frmLogin
        expect-disabled tnewpassword
        type txtPassword "p""/>{u00E9}"
        check chChangePassword on
        type tnewpassword ab
        type tverifypassword ab
        key Enter
        box "Password must be at least 3 characters" OK
        type tnewpassword abc
        key Enter
        box "New password and verify password must be the same" OK
        type tverifypassword abc
        click cmdCancel
        wait frmQVI_sendreceive
        expect-enabled cmdOK
        expect-focus lvCommands
        key Enter
        wait frmLogin
        expect-enabled txtPassword
        close frmLogin
        wait frmQVI_sendreceive
        key Escape
        wait frmQVI_Images
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(modified(), "Saved") << "nothing was sent";
    EXPECT_FALSE(exists("quorvantis_sendreceive.txt"));
}

} // namespace
} // namespace end_to_end
