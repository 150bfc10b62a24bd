// Answers that are none: whatever a server, or somebody in its place, says instead of taking the links, the person is
// told, the links stay marked, and the next run can do it.
#include "windows/end_to_end/upload.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace end_to_end {
namespace {

using Answers = Upload;

enum class Told { ByBox, ByMessage, ByMessageWithSettings };

struct Row {
    std::string path; // of the byte peer
    std::string text;
    Told told;
    std::string kept = "";   // in the error file
    std::string broken = ""; // what a box says before that
};

std::vector<Row> rows() {
    const std::string unreadable = "Error 002: Could not connect to server. Please report: ";
    const std::string off = "The Quorvantis server has currently been turned off. Please try again later.";
    const std::string page = "<html><body><p>Please log in to the hotel network.</p></body></html>";
    const std::string typed = "<!DOCTYPE results [<!ENTITY a \"b\">]><results>&a;</results>";
    const std::string timedOut = "The server timed out due to either:\r\n\r\n"
                                 "1. Server is busy on the supplier side, \r\n"
                                 "   please try again in a few minutes.\r\n\r\n"
                                 "2. Your proxy server timeout is to short,\r\n"
                                 "   contact your administrator.\r\n\r\n"
                                 "(HTTP protocol error. 504 Gateway Time-out)";
    const std::string shortBody = "transfer closed with 5 bytes remaining to read";
    const std::string shortChunk = "transfer closed with outstanding read data remaining";
    return {
        {"/ok", unreadable, Told::ByBox, "all is well\r\n"},
        {"/nothing", unreadable, Told::ByBox, "\r\n"},
        {"/web-page", unreadable, Told::ByBox, page + "\r\n"},
        {"/doctype", unreadable, Told::ByBox, typed + "\r\n"},
        {"/cut-off", unreadable, Told::ByBox, "<results><accepted\r\n"},
        {"/off", "Back at noon.", Told::ByBox},
        {"/half-off", off, Told::ByBox},
        {"/error-attribute", "Not today.", Told::ByBox},
        {"/error-child", "Not tomorrow.", Told::ByBox},
        {"/401", kSupplierFault, Told::ByMessage, "Authentication required\r\n"},
        {"/407", kSupplierFault, Told::ByMessage, "Authorization failed\r\n"},
        {"/503", kSupplierFault, Told::ByMessage, "<SYSDOWN/>\r\n"},
        {"/504", timedOut, Told::ByMessage},
        {"/elsewhere", kSupplierFault, Told::ByMessage, "moved\r\n"},
        {"/empty", kNoConnection + "(Empty reply from server)", Told::ByMessageWithSettings},
        {"/short", kNoConnection + "(" + shortBody + ")", Told::ByMessageWithSettings, "", shortBody},
        {"/short-chunk", kNoConnection + "(" + shortChunk + ")", Told::ByMessageWithSettings, "", shortChunk},
    };
}

TEST_F(Answers, ThatAreNoneClearNoMark) {
    std::string paths;
    for (const Row& row : rows()) {
        paths += row.path + ",";
    }
    webAddress = peerThatPlays(paths + "/results");
    upload();
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.path);
        if (!row.broken.empty()) {
            play("box \"Error in download : " + row.broken + "\" OK");
        }
        EXPECT_EQ(row.told == Told::ByBox ? expectBox(row.text)
                                          : expectMessage(row.text, row.told == Told::ByMessageWithSettings),
                  row.kept);
        expectStillToBeSent();
        sendAgain();
    }
    expectCompleted();
    leave();
    EXPECT_EQ(modified(), "");
}

} // namespace
} // namespace end_to_end
