// Listing and extracting real cabinets through the real library of this target.
#include "cabinet/cabinet_fixture.h"
#include "contracts/cabinet_world.h"
#include "fakes/stored_cabinet.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace {

using cabinet_test::CabinetFixture;
using cabinet_test::Lines;
using fakes::StoredFile;
using testing::HasSubstr;

// Below: a file at the top, one in a folder, and a name with an accent, once as ANSI and once as UTF-8.
const std::vector<StoredFile> kFiles = {{"a.txt", "top"},
                                        {"sub\\a.txt", "below", 0x0021, 0x0000},
                                        {"\xE9t\xE9.txt", "ansi", 0, 0},
                                        {"deep\\er\\\xC3\xA9t\xC3\xA9&.txt", "utf-8", 0xFF9F, 0xBF7D, 0xA0}};

class clsCABFileTest : public testing::Test {
protected:
    clsCABFileTest() { open(fakes::storedCabinet(kFiles)); }

    void open(const std::string& bytes) {
        world->files().replaceFile(in("x.cab"), bytes);
        test.cabinet->CabName = in("x.cab");
    }
    [[nodiscard]] std::string in(const std::string& name) const { return world->folder() + name; }
    [[nodiscard]] std::string read(const std::string& name) { return world->files().readFile(in(name)); }
    cabinet::clsCABFile& file() { return *test.cabinet; }

    std::unique_ptr<contracts::CabinetWorld> world = contracts::makeCabinetWorld();
    CabinetFixture test{world->api(), world->files(), world->ansi()};
};

TEST_F(clsCABFileTest, TheCountGoesOnFromCallToCall) {
    EXPECT_TRUE(file().SetuAPIisPresent());
    EXPECT_EQ(file().FileCount(), 4);
    (void)file().GetInfo("a.txt"); // leaves a filter, which the count ignores
    EXPECT_EQ(file().FileCount(), 8);
    EXPECT_EQ(test.make()->CabName, "");
}

TEST_F(clsCABFileTest, InfoReportsFullNamesThatMatch) {
    EXPECT_TRUE(file().GetInfo(""));
    EXPECT_EQ(test.events.lines, (Lines{"found a.txt|11/15/2026 7:08:12 PM|3|", "found a.txt|1/1/1980|5|sub\\",
                                        "found \xC3\xA9t\xC3\xA9.txt|12:00:00 AM|4|",
                                        "found \xC3\xA9t\xC3\xA9&.txt|12/31/2107 11:59:58 PM|5|deep\\er\\"}));
    struct Row {
        std::string filter;
        std::size_t found;
    };
    for (const Row& row :
         std::vector<Row>{{"A.TXT", 1}, {"SUB\\a.txt", 1}, {"sub\\", 0}, {"none", 0}, {"\xC3\x89T\xC3\x89.txt", 1}}) {
        test.events.lines.clear();
        EXPECT_TRUE(file().GetInfo(row.filter));
        EXPECT_EQ(test.events.lines.size(), row.found) << row.filter;
    }
}

TEST_F(clsCABFileTest, TheListingHoldsNamesWithoutFoldersThatMatchAndEscapesNothing) {
    const std::string begin = "<?xml version=\"1.0\"?><CABFILE CABFILENAME = '" + in("x.cab") + "'><FILES>";
    const std::string end = "</FILES></CABFILE>";
    const std::string top = "<FILE><FULLNAME>a.txt</FULLNAME><NAME>a.txt</NAME><DATE>11/15/2026 7:08:12 PM</DATE>"
                            "<SIZE>3</SIZE><PATH></PATH></FILE>\r\n";
    const std::string sub = "<FILE><FULLNAME>sub\\a.txt</FULLNAME><NAME>a.txt</NAME><DATE>1/1/1980</DATE>"
                            "<SIZE>5</SIZE><PATH>sub\\</PATH></FILE>\r\n";
    EXPECT_EQ(file().GetXML("A.TXT"), begin + top + sub + end);
    EXPECT_EQ(file().GetXML("sub\\a.txt"), begin + end);
    EXPECT_THAT(file().GetXML(""), HasSubstr("<FULLNAME>deep\\er\\\xC3\xA9t\xC3\xA9&.txt</FULLNAME>"));
    open(fakes::storedCabinet({}));
    EXPECT_EQ(file().GetXML(""), begin + end);
}

TEST_F(clsCABFileTest, ExtractingMakesFoldersAndTellsBeforeAndAfter) {
    EXPECT_TRUE(file().Extract("", in("new\\out"), ""));
    EXPECT_EQ(test.events.lines,
              (Lines{"before a.txt", "after " + in("new\\out\\a.txt"), "before sub\\a.txt",
                     "after " + in("new\\out\\sub\\a.txt"), "before \xC3\xA9t\xC3\xA9.txt",
                     "after " + in("new\\out\\\xC3\xA9t\xC3\xA9.txt"), "before deep\\er\\\xC3\xA9t\xC3\xA9&.txt",
                     "after " + in("new\\out\\deep\\er\\\xC3\xA9t\xC3\xA9&.txt")}));
    EXPECT_EQ(read("new\\out\\a.txt"), "top");
    EXPECT_EQ(read("new\\out\\sub\\a.txt"), "below");
    EXPECT_EQ(read("new\\out\\\xC3\xA9t\xC3\xA9.txt"), "ansi");
    EXPECT_EQ(read("new\\out\\deep\\er\\\xC3\xA9t\xC3\xA9&.txt"), "utf-8");
    EXPECT_EQ(test.log(), "19:08:12,clsCABFile:Extract, Before setupCabFile,734003200\r\n"
                          "19:08:12,clsCABFile:Extract, Before mode variables,734003200\r\n"
                          "19:08:12,clsCABFile:Extract, SetupIterateCabinet,734003200\r\n");
}

TEST_F(clsCABFileTest, ExtractingOneFileAnotherNameAndTheCabinetsOwnFolder) {
    EXPECT_TRUE(file().Extract("SUB\\A.TXT", "", "")); // no destination: beside the cabinet
    EXPECT_EQ(read("sub\\a.txt"), "below");
    EXPECT_FALSE(world->files().fileExists(in("a.txt")));

    EXPECT_TRUE(file().Extract("", in("one\\"), "b.dat")); // every file under one name: the last one wins
    EXPECT_EQ(read("one\\b.dat"), "utf-8");
    EXPECT_FALSE(world->files().folderExists(in("one\\sub")));

    EXPECT_TRUE(file().Extract("none", in("two"), ""));
    EXPECT_FALSE(world->files().folderExists(in("two")));
}

TEST_F(clsCABFileTest, CancelSkipsOneFileAndAnErrorOfAHandlerEndsAll) {
    test.events.beforeExtract = [](const std::string& name, bool& cancel) { cancel = name == "a.txt"; };
    EXPECT_TRUE(file().Extract("", in("out"), ""));
    EXPECT_FALSE(world->files().fileExists(in("out\\a.txt")));
    EXPECT_EQ(read("out\\sub\\a.txt"), "below");

    const auto fail = [] { throw base::RuntimeError(1234, "Host", "Host says no"); };
    test.events.beforeExtract = [&](const std::string& name, bool&) { name == "a.txt" ? fail() : void(); };
    EXPECT_EQ(test.errorOf([&] { return file().Extract("", in("before"), ""); }), "1234|Host|Host says no");
    EXPECT_FALSE(world->files().folderExists(in("before")));

    test.events.beforeExtract = nullptr;
    test.events.afterExtract = [&](const std::string&) { fail(); };
    EXPECT_EQ(test.errorOf([&] { return file().Extract("", in("after"), ""); }), "1234|Host|Host says no");
    EXPECT_EQ(read("after\\a.txt"), "top");
    EXPECT_FALSE(world->files().folderExists(in("after\\sub")));

    test.events.afterExtract = nullptr;
    EXPECT_TRUE(file().Extract("", in("after"), "")); // the failures above are forgotten
}

TEST_F(clsCABFileTest, NamesThatLeadElsewhereOrAreNoFilesAreListedAndNotExtracted) {
    const std::string longName(250, 'n');
    std::vector<StoredFile> files = {{"..\\up.txt", "x"},
                                     {"sub\\..\\..\\up.txt", "x"},
                                     {"c:\\drive.txt", "x"},
                                     {"c:drive.txt", "x"},
                                     {"\\root.txt", "x"},
                                     {"/root.txt", "x"},
                                     {"a.txt:stream", "x"},
                                     {"NUL", "x"},
                                     {"sub\\com1.txt", "x"},
                                     {"a?.txt", "x"},
                                     {".. \\up.txt", "x"},
                                     {longName, "x"},
                                     {"\xE4\xBA\xA7", "x", 0, 0, 0xA0}};
    const std::size_t refused = files.size();
    files.push_back({"slash/good.txt", "good"});
    open(fakes::storedCabinet(files));
    EXPECT_TRUE(file().Extract("", in("out"), ""));
    EXPECT_EQ(read("out\\slash\\good.txt"), "good");
    Lines extracted;
    std::copy_if(test.events.lines.begin(), test.events.lines.end(), std::back_inserter(extracted),
                 [](const std::string& line) { return line.starts_with("after "); });
    EXPECT_EQ(extracted, Lines{"after " + in("out\\slash\\good.txt")});

    test.events.lines.clear();
    EXPECT_TRUE(file().GetInfo(""));
    EXPECT_EQ(test.events.lines.size(), refused + 1);
    EXPECT_TRUE(file().Extract("..\\up.txt", in("out"), "renamed.txt")); // the stored name becomes no path
    EXPECT_EQ(read("out\\renamed.txt"), "x");
}

TEST_F(clsCABFileTest, AsManyFilesAsACabinetHolds) {
    std::vector<StoredFile> files(65'535);
    for (std::size_t i = 0; i < files.size(); ++i) {
        files[i].name = "folder\\" + std::to_string(i);
    }
    open(fakes::storedCabinet(files));
    EXPECT_EQ(file().FileCount(), 65'535);
    EXPECT_THAT(file().GetXML("65534"), HasSubstr("<FULLNAME>folder\\65534</FULLNAME>"));
}

} // namespace
