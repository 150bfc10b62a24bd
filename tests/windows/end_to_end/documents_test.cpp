// Link documents that are damaged, foreign, huge or busy: the dialog opens, and no link is lost.
#include "windows/end_to_end/shop.h"

#include <gmock/gmock.h>

#include <string>

namespace end_to_end {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr std::string_view kNewLink = "<images><p f1=\"A\" f2=\"a.jpg\" f3=\"created\"/></images>\r\n";

class Documents : public Shop {
protected:
    Documents() { write("images\\a.jpg", "picture"); }

    // Opens the image manager for product A, which shows these lines, and adds a.jpg.
    void addPicture(const std::string& shown) {
        startHost({"A"});
        play("wait frmQVI_Images 30\nexpect lImages " + shown + R"(
            click cmdbrowse
            pick "{folder}images\a.jpg"
            expect lImages )" +
             shown + R"( a.jpg
            key Escape
        )");
        EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    }
};

TEST_F(Documents, ThatCannotBeReadAreKeptAside) {
    struct Row {
        const char* name;
        std::string bytes;
    };
    const std::vector<Row> rows{
        {"not closed", R"(<images><p f1="A" f2="old.jpg")"},
        {"no XML at all", "MZ\x90\x01"},
        {"text after the root", "<images/>junk"},
        {"invalid UTF-8 under a declaration",
         "<?xml version=\"1.0\" encoding=\"UTF-8\"?><images><p f1=\"A\" f2=\"\xE9.jpg\"/></images>"},
        {"an encoding that nobody knows", "<?xml version=\"1.0\" encoding=\"x-none\"?><images/>"},
        {"an undefined entity", R"(<images><p f1="A" f2="&nope;"/></images>)"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        write("images.xml", row.bytes);
        addPicture("");
        EXPECT_EQ(read("images.xml"), kNewLink);
        const std::vector<std::string> kept = namesLike("images.unreadable-*.xml");
        ASSERT_EQ(kept.size(), 1U);
        EXPECT_EQ(read(kept[0]), row.bytes);
        DeleteFileA((folder() + kept[0]).c_str());
    }
}

TEST_F(Documents, ThatAreEmptyOrMissingStartAnew) {
    write("images.xml", "");
    addPicture("");
    EXPECT_EQ(read("images.xml"), kNewLink);
    EXPECT_THAT(namesLike("images.unreadable-*.xml"), IsEmpty());
}

TEST_F(Documents, InOldEncodingsShowTheirLinks) {
    struct Row {
        const char* name;
        std::string bytes;
    };
    const std::string link = "<p f1=\"A\" f2=\"caf\xE9.jpg\" f3=\"created\"/>";
    const std::vector<Row> rows{
        {"the ANSI code page, undeclared", "<images>" + link + "</images>"},
        {"windows-1252", "<?xml version=\"1.0\" encoding=\"windows-1252\"?><images>" + link + "</images>"},
        {"ISO-8859-1", "<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><images>" + link + "</images>"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        write("images.xml", row.bytes);
        addPicture("caf\xC3\xA9.jpg");
        EXPECT_THAT(read("images.xml"), HasSubstr("f2=\"caf\xC3\xA9.jpg\"")) << "written as UTF-8";
    }
    EXPECT_THAT(namesLike("images.unreadable-*.xml"), IsEmpty());
}

TEST_F(Documents, WithADoctypeAreNotExpanded) {
    // Each entity is ten of the one before: expanded, it would be 10 MB.
    std::string bytes = "<!DOCTYPE images [<!ENTITY a \"0123456789\">";
    for (char name = 'b'; name <= 'g'; ++name) {
        const std::string inner = std::string("&") + static_cast<char>(name - 1) + ";";
        bytes += std::string("<!ENTITY ") + name + " \"";
        for (int i = 0; i < 10; ++i) {
            bytes += inner;
        }
        bytes += "\">";
    }
    bytes += R"(]><images><p f1="A" f2="&g;" f3="created"/><p f1="A" f2="old.jpg" f3="created"/></images>)";
    write("images.xml", bytes);
    startHost({"A"});
    play("wait frmQVI_Images\nexpect-enabled lImages\nread lImages\nkey Escape");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("images.xml"), bytes);
}

TEST_F(Documents, OfTwentyMegabytesOpenAndSave) {
    std::string bytes = "<images><p f1=\"A\" f2=\"old.jpg\" f3=\"created\"/>";
    while (bytes.size() < 20'000'000) {
        bytes += "<p f1=\"P" + std::to_string(bytes.size()) + "\" f2=\"picture.jpg\" f3=\"created\"/>";
    }
    write("images.xml", bytes + "</images>");
    addPicture("old.jpg");
    EXPECT_TRUE(read("images.xml") == bytes + "<p f1=\"A\" f2=\"a.jpg\" f3=\"created\"/></images>\r\n");
}

TEST_F(Documents, LockedWhileTheDialogOpensLoseNoLink) {
    constexpr std::string_view kOld = R"(<images><p f1="A" f2="old.jpg" f3="created"/></images>)";
    write("images.xml", kOld);
    {
        const LockedFile lock(folder() + "images.xml");
        startHost({"A"});
        play("wait frmQVI_Images\nexpect lImages");
    }
    play(R"(
        click cmdbrowse
        pick "{folder}images\a.jpg"
        expect lImages a.jpg
        key Escape
    )");
    EXPECT_EQ(hostEnds(), std::string(kSuccess) + "END\r\n");
    EXPECT_EQ(read("images.xml"), kNewLink);
    const std::vector<std::string> kept = namesLike("images.unreadable-*.xml");
    ASSERT_EQ(kept.size(), 1U);
    EXPECT_EQ(read(kept[0]), kOld);
}

} // namespace
} // namespace end_to_end
