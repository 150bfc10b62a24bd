// Auto-link's two modes: their oddities by example, their links by a literal double loop.
#include "images/auto_link.h"

#include "base/text.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_code_page.h"
#include "fakes/fake_file_system.h"
#include "images/recording_run.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace {

using images::AutoLinkMode;
using images_test::RecordingRun;
using Lines = std::vector<std::string>;

class AutoLinkTest : public testing::Test {
protected:
    AutoLinkTest() {
        fileSystem.addFolder("C:\\P");
        open("<images/>");
    }
    void open(const std::string& xml) {
        fileSystem.addFile("C:\\images.xml", xml);
        document.open("C:\\");
    }
    void pictures(const Lines& names) {
        for (const std::string& name : names) {
            fileSystem.addFile("C:\\P\\" + name, "");
        }
    }
    images::AutoLinkResult link(const Lines& codes, AutoLinkMode mode) {
        images::FolderFiles files(fileSystem, "C:\\P");
        EXPECT_TRUE(files.list(run));
        return images::autoLink(codes, files, mode, document, run);
    }
    // "code/file" of every link.
    Lines links() {
        Lines found;
        document.forEachLink([&](const images::Link& link) {
            found.push_back(link.code() + "/" + link.file());
            return true;
        });
        return found;
    }

    fakes::FakeFileSystem fileSystem;
    fakes::FakeClock clock;
    fakes::FakeCodePage ansi;
    images::LinkDocument document{images::LinkKind::Images, fileSystem, clock, ansi};
    RecordingRun run;
};

TEST_F(AutoLinkTest, NumberedPicturesMustBeGapFree) {
    pictures({"ABC.JPG", "abc_1.jpg", "ABC_3.JPG", "DEF_1.JPG", "DEF_2.JPG"});
    open(R"(<images><p f1="DEF" f2="DEF_1.JPG" f3="created"/></images>)");
    const auto result = link({"ABC", " DEF", "DEF", ""}, AutoLinkMode::NumberedPictures);
    EXPECT_EQ(links(), (Lines{"DEF/DEF_1.JPG", "ABC/ABC_1.JPG", "DEF/DEF_2.JPG"}));
    EXPECT_EQ(run.lines, (Lines{"AddedABC linked to image ABC_1.jpg", "AddedDEF linked to image DEF_2.jpg"}));
    EXPECT_EQ(result.counted, 2);
    EXPECT_EQ(result.written, 2);
    EXPECT_EQ(run.captions.front(), "Searching for image for product code ABC");
}

TEST_F(AutoLinkTest, NamesThatContainTheCode) {
    pictures({"AB1.JPG", "xab12.jpg", "AB1-front.jpg.bak", "AB1.PNG", "AB1 ALSO.JPG"});
    const auto result = link({"ab1", "", "   "}, AutoLinkMode::NameContainsCode);
    EXPECT_EQ(links(), (Lines{"ab1/AB1 ALSO.JPG", "ab1/AB1-FRONT.JPG.BAK", "ab1/XAB12.JPG"}));
    EXPECT_EQ(run.lines.front(), "Addedab1 linked to image AB1 ALSO.JPG");
    EXPECT_TRUE(result.changed);

    link({"ab1"}, AutoLinkMode::NameContainsCode); // a second run links the same pictures again
    EXPECT_EQ(links().size(), 6U);
}

TEST_F(AutoLinkTest, ALinkToCodeJpgStopsTheProductAndAnApostropheDoesNot) {
    pictures({"ABC-1.JPG", "O'NEIL 1.JPG"});
    open(R"(<images><p f1="ABC" f2="ABC.JPG" f3="deleted"/></images>)");
    link({"ABC", "O'NEIL"}, AutoLinkMode::NameContainsCode); // the second code's search fails: none found
    EXPECT_EQ(links(), (Lines{"ABC/ABC.JPG", "O'NEIL/O'NEIL 1.JPG"}));
}

TEST_F(AutoLinkTest, ADocumentThatTakesNoLinksIsCountedAllTheSame) {
    pictures({"ABC-1.JPG"});
    open("<rtf/>");
    const auto result = link({"ABC"}, AutoLinkMode::NameContainsCode);
    EXPECT_EQ(result.written, 1);
    EXPECT_TRUE(links().empty());
}

TEST_F(AutoLinkTest, StopsAtTheNextItem) {
    pictures({"A1.JPG", "A2.JPG", "A3.JPG"});
    images::FolderFiles files(fileSystem, "C:\\P");
    ASSERT_TRUE(files.list(run));
    RecordingRun impatient(3); // the code, the first picture, the second: stop
    const auto result = images::autoLink({"A", "B"}, files, AutoLinkMode::NameContainsCode, document, impatient);
    EXPECT_EQ(result.written, 2);
}

TEST_F(AutoLinkTest, LinksWhatTheDoubleLoopWouldInItsOrder) {
    std::mt19937 random(7);
    const auto text = [&](std::size_t least, std::size_t spread) {
        static constexpr std::string_view kLetters[] = {"A", "b", "1", "-", "\xC3\xA9", "\xC3\x89", " "};
        std::string out;
        for (std::size_t n = least + random() % spread; n > 0; --n) {
            out += kLetters[random() % std::size(kLetters)];
        }
        return out;
    };
    for (int round = 0; round < 60; ++round) {
        open("<images/>");
        fakes::FakeFileSystem folder;
        folder.addFolder("C:\\P");
        Lines codes;
        for (int i = 0; i < 30; ++i) {
            folder.addFile("C:\\P\\x" + text(0, 9) + (random() % 4 == 0 ? ".png" : ".jpg"), "");
            codes.push_back(text(1, 6));
        }
        images::FolderFiles files(folder, "C:\\P");
        ASSERT_TRUE(files.list(run));
        images::autoLink(codes, files, AutoLinkMode::NameContainsCode, document, run);

        Lines expected;
        for (const std::string& code : codes) {
            const std::string upper = base::upperCase(code);
            for (const std::string& name : files.upperNames()) {
                if (!base::trim(code).empty() && name != upper + ".JPG" && name.find(".JPG") != std::string::npos &&
                    name.find(upper) != std::string::npos) {
                    expected.push_back(std::string(base::trim(code)) + "/" + name);
                }
            }
        }
        ASSERT_EQ(links(), expected) << "round " << round;
    }
}

TEST_F(AutoLinkTest, ListedFoldersAnswerAsTheFileSystemDoes) {
    pictures({"Plain.jpg", "\xC3\xA9t\xC3\xA9.JPG"});
    fileSystem.addFolder("C:\\P\\sub.jpg");
    fileSystem.addFile("C:\\P\\sub.jpg\\inner.jpg", "");
    images::FolderFiles files(fileSystem, "C:\\P");
    ASSERT_TRUE(files.list(run));
    for (const char* name : {"plain.JPG", "\xC3\x89T\xC3\x89.jpg", "sub.jpg", "sub.jpg\\inner.jpg", "", ".", "..",
                             "*.jpg", "plain.jp?", "Plain.jpg.", " Plain.jpg", "nul", "com1.jpg", "missing.jpg"}) {
        const bool real = *name != '\0' && fileSystem.fileExists(std::string("C:\\P\\") + name);
        EXPECT_EQ(files.contains(name), real) << name;
    }
    images::FolderFiles vanished(fileSystem, "C:\\gone");
    EXPECT_TRUE(vanished.list(run));
    EXPECT_TRUE(vanished.upperNames().empty());
}

} // namespace
