// Opening, changing and saving the link documents, seen from the host's folder.
#include "images/link_document.h"

#include "base/error_number.h"
#include "base/runtime_error.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"

#include <gmock/gmock.h>
#include <string>

namespace {

using images::Link;
using images::LinkDocument;
using images::LinkKind;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* kImages = "C:\\h\\images.xml";
constexpr const char* kKept = "C:\\h\\images.unreadable-20261115_190812.xml";

class LinkDocumentTest : public testing::Test {
protected:
    LinkDocumentTest() { files.addFolder("C:\\h"); }

    void open(const std::string& bytes) {
        files.addFile(kImages, bytes);
        links.open("C:\\h\\");
    }

    fakes::FakeFileSystem files;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    LinkDocument links{LinkKind::Images, files, clock, ansi};
};

TEST_F(LinkDocumentTest, StartsEmptyWithoutAFileAndWritesItAtTheFirstSave) {
    links.open("C:\\h\\");
    EXPECT_THAT(links.linkedFiles("ABC123"), IsEmpty());
    EXPECT_THAT(files.files(), IsEmpty());

    links.add("ABC123", "sub\\\xC3\xA9.JPG");
    links.saveText();
    const std::string document = "<images><p f1=\"ABC123\" f2=\"sub\\\xC3\xA9.JPG\" f3=\"created\"/></images>";
    EXPECT_EQ(files.contents(kImages), document + "\r\n");
    links.save();
    EXPECT_EQ(files.contents(kImages), document);

    LinkDocument again(LinkKind::Images, files, clock, ansi);
    again.open("C:\\h\\");
    EXPECT_THAT(again.linkedFiles("ABC123"), ElementsAre("sub\\\xC3\xA9.JPG"));
}

TEST_F(LinkDocumentTest, DeletedLinksAreFoundButNotListed) {
    open("<images><p f1='A' f2='1' f3='deleted'/><p f1='A' f2='2'/><p f1='A' f2='2' f3='created'/></images>");
    EXPECT_THAT(links.linkedFiles("A"), ElementsAre("2", "2"));
    EXPECT_EQ(links.findLink("A", "1").status(), "deleted");

    const Link first = links.findLinkAnywhere("A", "2");
    links.remove(first);
    EXPECT_EQ(first.status(), "deleted");
    EXPECT_THAT(links.linkedFiles("A"), ElementsAre("2")) << "only the first of two equal links goes";
    EXPECT_EQ(base::errorNumber([&] { links.remove(first); }), base::error::kObjectNotSet);
    links.remove(links.findLinkAnywhere("A", "3"));
    links.save();
    EXPECT_EQ(files.contents(kImages), "<images><p f1=\"A\" f2=\"1\" f3=\"deleted\"/>"
                                       "<p f1=\"A\" f2=\"2\" f3=\"created\"/></images>");
}

TEST_F(LinkDocumentTest, SpecificationsAreNeverFoundByTheManualSearch) {
    LinkDocument specifications(LinkKind::Specifications, files, clock, ansi);
    specifications.open("C:\\h\\");
    for (int i = 0; i < 2; ++i) {
        EXPECT_FALSE(specifications.findLink("A", "a.pdf"));
        specifications.add("A", "a.pdf", "Data \"sheet\"");
    }
    EXPECT_THAT(specifications.linkedFiles("A"), ElementsAre("a.pdf", "a.pdf"));
    EXPECT_EQ(specifications.findLinkAnywhere("A", "a.pdf").description(), "Data \"sheet\"");
    specifications.save();
    EXPECT_TRUE(files.hasFile("C:\\h\\rtf.xml"));
}

TEST_F(LinkDocumentTest, ApostrophesEndTheLiteralOfTheExpression) {
    open("<images><p f1='A' f2='1'/><q/><p f1='B' f2='2' f3='deleted'/><p f1='C' f2='3'/></images>");
    EXPECT_EQ(base::errorNumber([&] { static_cast<void>(links.linkedFiles("O'NEIL")); }), base::error::kUnspecified);
    EXPECT_EQ(base::errorNumber([&] { static_cast<void>(links.findLink("A", "it's")); }), base::error::kUnspecified);
    EXPECT_THAT(links.linkedFiles("x' or '1'='1"), ElementsAre("1", "3"));
    links.remove(links.findLinkAnywhere("x' or '1'='1", "x' or 'y"));
    EXPECT_THAT(links.linkedFiles("A"), IsEmpty());
    // A search that was turned into one for attributes finds nothing that could be removed.
    EXPECT_EQ(base::errorNumber([&] { links.remove(links.findLinkAnywhere("'] | //@f1 | //p['", "")); }), 91);
}

TEST_F(LinkDocumentTest, RefusesToAddWhatItCannotHold) {
    const std::string text = "<images><p f1=\"A\" f2=\"1\"/></images>";
    open(text);
    for (const char* value : {"\x07", "\xED\xA0\x80", "\xEF\xBF\xBF"}) {
        EXPECT_EQ(base::errorNumber([&] { links.add("A", value); }), base::error::kInvalidProcedureCall);
        EXPECT_EQ(base::errorNumber([&] { links.add("A", "2", value); }), base::error::kInvalidProcedureCall);
    }
    EXPECT_EQ(links.xml(), text);
    const std::string longCode(10000, 'x');
    links.add(longCode, "&<>\"\t\n");
    EXPECT_THAT(links.linkedFiles(longCode), ElementsAre("&<>\"\t\n"));

    open("<rtf/>");
    EXPECT_EQ(base::errorNumber([&] { links.add("A", "1"); }), base::error::kObjectNotSet);
    EXPECT_EQ(links.xml(), "<rtf/>");
    links.save();
    EXPECT_FALSE(files.hasFile(kKept)) << "a foreign root is readable";
}

TEST_F(LinkDocumentTest, ReadsOldFilesInTheAnsiCodePageOnlyWhenNothingElseIsWrong) {
    const struct {
        const char* name;
        std::string bytes;
        const char* file; // "" : unreadable
    } rows[] = {
        {"no declaration", "<images><p f1='A' f2='caf\xE9\x80.jpg'/></images>", "caf\xC3\xA9\xE2\x82\xAC.jpg"},
        {"UTF-8", "<images><p f1='A' f2='\xC3\xA9'/></images>", "\xC3\xA9"},
        {"declared ANSI", "<?xml version='1.0' encoding='windows-1252'?><images><p f1='A' f2='\xE9'/></images>",
         "\xC3\xA9"},
        {"declared without encoding", "<?xml version='1.0'?><images><p f1='A' f2='\xE9'/></images>", ""},
        {"marked UTF-8", "\xEF\xBB\xBF<images><p f1='A' f2='\xE9'/></images>", ""},
        {"broken as well", "<images><p f1='A' f2='\xE9'></images>", ""},
    };
    for (const auto& row : rows) {
        open(row.bytes);
        if (*row.file == '\0') {
            EXPECT_EQ(links.xml(), "<images/>") << row.name;
        } else {
            EXPECT_THAT(links.linkedFiles("A"), ElementsAre(row.file)) << row.name;
        }
        links.save();
        EXPECT_EQ(files.hasFile(kKept), *row.file == '\0') << row.name;
        if (files.hasFile(kKept)) {
            EXPECT_EQ(files.contents(kKept), row.bytes);
            files.removeFile(kKept);
        }
    }
}

TEST_F(LinkDocumentTest, KeepsAnUnreadableFileBeforeTheFirstSaveReplacesIt) {
    open("<images><p f1='A'");
    EXPECT_THAT(files.operations(), ElementsAre(testing::StartsWith("read "))) << "opening writes nothing";
    links.add("B", "1");
    links.saveText();
    links.save();
    EXPECT_EQ(files.contents(kKept), "<images><p f1='A'");
    EXPECT_EQ(files.contents(kImages), "<images><p f1=\"B\" f2=\"1\" f3=\"created\"/></images>");
    EXPECT_THAT(files.files(), testing::SizeIs(2)) << "kept once";

    open("");
    links.save();
    EXPECT_THAT(files.files(), testing::SizeIs(2)) << "an empty file holds nothing to keep";
}

TEST_F(LinkDocumentTest, KeepsAFileThatWasLockedWhileItWasOpened) {
    files.addFile(kImages, "<images><p f1='A' f2='1'/></images>");
    files.lock(kImages);
    links.open("C:\\h\\");
    EXPECT_THAT(links.linkedFiles("A"), IsEmpty());
    links.add("B", "2");
    EXPECT_EQ(base::errorNumber([&] { links.saveText(); }), base::error::kPermissionDenied);
    files.unlock(kImages);
    links.saveText();
    EXPECT_EQ(files.contents(kKept), "<images><p f1='A' f2='1'/></images>");
}

TEST_F(LinkDocumentTest, AFailedSaveLeavesTheFileAsItWas) {
    const std::string broken = "<images";
    open(broken);
    files.addFile(kKept, "older"); // of the same second: never replaced
    EXPECT_EQ(base::errorNumber([&] { links.save(); }), base::error::kPathFileAccess);
    EXPECT_EQ(files.contents(kImages), broken);
    EXPECT_EQ(files.contents(kKept), "older");

    clock.advance(std::chrono::seconds(1));
    files.failWrite(1);
    EXPECT_EQ(base::errorNumber([&] { links.save(); }), base::error::kDiskFull);
    EXPECT_EQ(files.contents(kImages), broken) << "moved back";
    links.save();
    EXPECT_EQ(files.contents("C:\\h\\images.unreadable-20261115_190813.xml"), broken);
}

TEST_F(LinkDocumentTest, OpeningAgainForgetsWhatWasBefore) {
    open("<images><p f1='A' f2='1'/></images>");
    const Link old = links.findLink("A", "1");
    links.add("A", "2");
    open("<images><p f1='A' f2='3'/></images>");
    EXPECT_THAT(links.linkedFiles("A"), ElementsAre("3"));
    EXPECT_EQ(old.file(), "1");
    EXPECT_EQ(base::errorNumber([&] { links.remove(old); }), base::error::kObjectNotSet);
    EXPECT_EQ(links.xml(), "<images><p f1=\"A\" f2=\"3\"/></images>");
}

} // namespace
