// The reports' rows, texts letter for letter.
#include "images/link_report.h"

#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "images/price_list.h"
#include "images/recording_run.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Lines = std::vector<std::string>;

constexpr std::string_view kLinks =
    R"(<images><p f1="LINKED" f2="pic.jpg"/><p f1="BROKEN" f2="gone.jpg" f3="deleted"/>)"
    R"(<p f1="BOTH" f2="pic.jpg"/><p f1="BOTH" f2="JPGS\b.jpg"/></images>)";

class LinkReportTest : public testing::Test {
protected:
    LinkReportTest() {
        for (const char* name : {"pic.jpg", "NAMED.JPG", "linked.RTF", "RTFS\\B.RTF"}) {
            fileSystem.addFile(std::string("C:\\images\\") + name, "");
        }
        fileSystem.addFile("C:\\images.xml", kLinks);
        document.open("C:\\");
    }
    std::string report(const Lines& lines, const images::ReportOptions& options) {
        images::FolderFiles files(fileSystem, "C:\\images");
        EXPECT_TRUE(files.list(run));
        return images::makeReport(lines, options, document, files, run);
    }

    fakes::FakeFileSystem fileSystem;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    images::LinkDocument document{images::LinkKind::Images, fileSystem, clock, ansi};
    images_test::RecordingRun run;
};

TEST_F(LinkReportTest, RowsWithDescriptions) {
    EXPECT_EQ(report({"LINKED,Gear, small", "BROKEN,Bolt", "BOTH,Nut", "NAMED,Cup", "NONE", "O'NEIL,x", ""},
                     {.kind = images::ReportKind::Linked, .withDescriptions = true}),
              "LINKED,Gear, small, Image found: pic.jpg, RTF found: LINKED.rtf\r\n"
              "BROKEN,Bolt, Linked to gone.jpgbut NO Image found, No RTF\r\n"
              "BOTH,Nut, Linked to JPGS\\b.jpgbut NO Image found, RTF found: RTFS\\B.RTF\r\n"
              "NAMED,Cup,Linked to NAMED.jpg, No RTF\r\n"
              "NONE,, No Image, No RTF\r\n"
              "O'NEIL,x, No Image, No RTF\r\n"
              ",, No Image, No RTF\r\n");
    EXPECT_EQ(run.lines, (Lines{"BROKEN:Bolt linked to image gone.jpg, but no jpeg file found.",
                                "BOTH:Nut linked to image JPGS\\b.jpg, but no jpeg file found.", "NONE: has no image.",
                                "O'NEIL:x has no image.", ": has no image."}));
    EXPECT_EQ(run.captions.front(), "Searching for image for product code LINKED");
}

TEST_F(LinkReportTest, RowsOfCodesAlone) {
    EXPECT_EQ(report({"LINKED", "BROKEN", "NAMED", "a,b", "STW01640012"}, {.kind = images::ReportKind::Linked}),
              "LINKED,, Image found: pic.jpg, RTF found: LINKED.rtf\r\n"
              "BROKEN, Linked to gone.jpgbut NO Image found, No RTF\r\n"
              "NAMED,,Linked to NAMED.jpg, No RTF\r\n"
              "a,b,No Image, No RTF\r\n"
              "STW01640012,No Image, No RTF\r\n");
}

TEST_F(LinkReportTest, TheOtherReportHoldsProductsWithoutAUsablePicture) {
    const Lines lines = {"LINKED,x", "BROKEN,Bolt", "BOTH,Nut", "NAMED,Cup", "NONE,y"};
    EXPECT_EQ(report(lines, {.kind = images::ReportKind::NotLinked, .withDescriptions = true}),
              "BROKEN,Bolt, No Image, No RTF\r\nBOTH,Nut, No Image, RTF found: RTFS\\B.RTF\r\n"
              "NONE,y, No Image, No RTF\r\n");
    EXPECT_EQ(report({"NONE"}, {.kind = images::ReportKind::NotLinked, .checkSpecifications = false}),
              "NONE,No Image\r\n");
}

TEST(PriceListLines, EndAtAnyLineBreakAndDecode) {
    fakes::FakeCodePage ansi;
    EXPECT_EQ(images::priceListLines("a\r\nb\nc\rd", ansi), (Lines{"a", "b", "c", "d"}));
    EXPECT_EQ(images::priceListLines("a\r\n\r\n \r\n", ansi), (Lines{"a", "", " "}));
    EXPECT_EQ(images::priceListLines("", ansi), Lines{});
    EXPECT_EQ(images::priceListLines("\xE9", ansi), Lines{"\xC3\xA9"});
    EXPECT_EQ(images::priceListLines("\xEF\xBB\xBF\xC3\xA9\r\n", ansi), Lines{"\xC3\xA9"});
}

} // namespace
