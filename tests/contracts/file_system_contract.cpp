#include "contracts/file_system_contract.h"

#include "base/error_number.h"

#include <algorithm>
#include <string>
#include <vector>

namespace contracts {
namespace {

TEST_P(FileSystemContract, SavedBytesComeBackUnderEveryKindOfName) {
    files().createFolder(in("with blank"));
    const std::vector<std::string> names = {"images.xml", "no extension", "with blank\\a.b.c",
                                            "\xC3\xA9t\xC3\xA9 \xE4\xBA\xA7\xE5\x93\x81 \xF0\x9F\x96\xBC.xml",
                                            "O'NEIL & Co [1].xml"};
    const std::vector<std::string> contents = {everyByte(), "", std::string(3'000'000, 'x'), "\xEF\xBB\xBF<a/>\r\n"};
    for (const std::string& name : names) {
        for (const std::string& bytes : contents) {
            files().replaceFile(in(name), bytes);
            EXPECT_TRUE(files().readFile(in(name)) == bytes) << name << ", " << bytes.size() << " bytes";
        }
        EXPECT_FALSE(files().fileExists(in(name) + ".tmp")) << name;
    }
}

TEST_P(FileSystemContract, OnlyFilesAreFilesAndOnlyFoldersAreFolders) {
    files().createFolder(in("folder"));
    files().replaceFile(in("file.txt"), "x");
    struct Row {
        std::string path;
        bool isFile;
        bool isFolder;
    };
    const std::vector<Row> rows = {
        {in("file.txt"), true, false},
        {in("folder"), false, true},
        {in("folder\\"), false, true},
        {in("file.txt\\"), false, false},
        {in("missing"), false, false},
        {in("missing\\x"), false, false},
        {in("file.txt\\x"), false, false},
        {in("*.txt"), false, false},
        {in("file.tx?"), false, false},
        {in("fold*"), false, false},
        {"", false, false},
        {in(std::string("file.txt\0x", 10)), false, false},
        {in(std::string(5000, 'n')), false, false},
        {in("folder\\\\..\\file.txt"), true, false},
        {in("folder/../file.txt"), true, false},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(files().fileExists(row.path), row.isFile) << row.path;
        EXPECT_EQ(files().folderExists(row.path), row.isFolder) << row.path;
    }
}

TEST_P(FileSystemContract, OpeningFailuresHaveTheirNumbers) {
    files().createFolder(in("folder"));
    files().replaceFile(in("file.txt"), "x");
    struct Row {
        std::string path;
        int read;
        int replace;
        int remove;
    };
    const std::vector<Row> rows = {
        {in("missing.txt"), 53, 0, 0}, // the save makes it, so that it can be removed
        {in("missing\\a.txt"), 76, 76, 76},
        {in("file.txt\\a.txt"), 76, 76, 76},
        {in("folder"), 75, 75, 75},
        {"", 76, 76, 76},
        {"\\\\nobody.invalid\\share\\a.txt", 76, 76, 76},
        {in(std::string("file.txt\0x", 10)), 52, 52, 52},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(base::errorNumber([&] { (void)files().readFile(row.path); }), row.read) << row.path;
        EXPECT_EQ(base::errorNumber([&] { files().replaceFile(row.path, "new"); }), row.replace) << row.path;
        EXPECT_EQ(base::errorNumber([&] { files().removeFile(row.path); }), row.remove) << row.path;
    }
    EXPECT_EQ(base::errorNumber([&] { files().removeFile(in("missing.txt")); }), 53);
    if (world().isWindowsLike()) {
        for (const char* name : {"a<b.txt", "a*b.txt", "a\"b.txt", "a|b.txt"}) {
            EXPECT_EQ(base::errorNumber([&] { (void)files().readFile(in(name)); }), 52) << name;
            EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in(name), "new"); }), 52) << name;
        }
    }
}

TEST_P(FileSystemContract, CaseDoesNotMatterOnWindows) {
    if (!world().isWindowsLike()) {
        GTEST_SKIP() << "names keep their case here";
    }
    files().replaceFile(in("Images.xml"), "old");
    files().replaceFile(in("IMAGES.XML"), "new");
    EXPECT_EQ(files().readFile(in("images.xml")), "new");
    files().moveFile(in("images.xml"), in("images.XML")); // onto itself in another spelling
    EXPECT_EQ(files().readFile(in("Images.xml")), "new");
}

TEST_P(FileSystemContract, ReadOnlyFilesAreReadButNeitherReplacedNorRemoved) {
    files().replaceFile(in("a.xml"), "old");
    world().setReadOnly(in("a.xml"), true);
    EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in("a.xml"), "new"); }), 75);
    EXPECT_EQ(base::errorNumber([&] { files().removeFile(in("a.xml")); }), 75);
    expectUntouched(in("a.xml"), "old");
    world().setReadOnly(in("a.xml"), false);
    files().replaceFile(in("a.xml"), "new");
    expectUntouched(in("a.xml"), "new");
}

TEST_P(FileSystemContract, ALockedFileIsRefusedUntilItIsFree) {
    files().replaceFile(in("a.xml"), "old");
    if (!world().lock(in("a.xml"))) {
        GTEST_SKIP() << "no locks in this world";
    }
    EXPECT_TRUE(files().fileExists(in("a.xml")));
    EXPECT_EQ(base::errorNumber([&] { (void)files().readFile(in("a.xml")); }), 70);
    EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in("a.xml"), "new"); }), 70);
    EXPECT_EQ(base::errorNumber([&] { files().removeFile(in("a.xml")); }), 70);
    EXPECT_EQ(base::errorNumber([&] { files().moveFile(in("a.xml"), in("b.xml")); }), 70);
    world().unlock(in("a.xml"));
    expectUntouched(in("a.xml"), "old");
    files().replaceFile(in("a.xml"), "new");
    expectUntouched(in("a.xml"), "new");
}

TEST_P(FileSystemContract, AStrayTemporaryFileIsReusedByTheNextSave) {
    files().replaceFile(in("a.xml"), "old");
    files().replaceFile(in("a.xml.tmp"), std::string(100'000, '?'));
    files().replaceFile(in("a.xml"), "new");
    expectUntouched(in("a.xml"), "new");
}

TEST_P(FileSystemContract, WhatIsInTheTemporaryFilesWayFailsTheSaveAndStays) {
    files().replaceFile(in("a.xml"), "old");
    files().createFolder(in("a.xml.tmp"));
    EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in("a.xml"), "new"); }), 75);
    EXPECT_TRUE(files().folderExists(in("a.xml.tmp")));
    EXPECT_EQ(files().readFile(in("a.xml")), "old");

    files().replaceFile(in("b.xml"), "old");
    files().replaceFile(in("b.xml.tmp"), "theirs");
    if (world().lock(in("b.xml.tmp"))) {
        EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in("b.xml"), "new"); }), 70);
        world().unlock(in("b.xml.tmp"));
        EXPECT_EQ(files().readFile(in("b.xml")), "old");
        EXPECT_EQ(files().readFile(in("b.xml.tmp")), "theirs");
    }
}

TEST_P(FileSystemContract, AFullDiskLeavesTheOldFile) {
    files().replaceFile(in("a.xml"), "old");
    if (!world().fillDiskFor(in("a.xml"))) {
        GTEST_SKIP() << "no full disk in this world";
    }
    EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in("a.xml"), std::string(100'000, 'n')); }), 61);
    expectUntouched(in("a.xml"), "old");
    world().freeDiskFor(in("a.xml"));
    files().replaceFile(in("a.xml"), "new");
    expectUntouched(in("a.xml"), "new");
}

TEST_P(FileSystemContract, AFolderThatTakesNoNewFilesStillLetsItsFilesBeSaved) {
    files().createFolder(in("shut"));
    files().replaceFile(in("shut\\a.xml"), "a longer old document");
    if (!world().denyCreation(in("shut"))) {
        GTEST_SKIP() << "folders cannot be shut in this world";
    }
    for (const std::string bytes : {"shorter", "a very much longer new document"}) {
        EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in("shut\\a.xml"), bytes); }), 0);
        expectUntouched(in("shut\\a.xml"), bytes);
    }
    EXPECT_EQ(base::errorNumber([&] { files().replaceFile(in("shut\\new.xml"), "x"); }), 75);
    EXPECT_EQ(base::errorNumber([&] { files().createFolder(in("shut\\new")); }), 75);
    world().allowCreation(in("shut"));
}

TEST_P(FileSystemContract, LongPathsWork) {
    std::string folder = in("");
    for (int level = 0; level < 8; ++level) {
        folder += std::string(60, static_cast<char>('a' + level)) + "\\";
        files().createFolder(folder);
    }
    files().replaceFile(folder + "a.xml", "old");
    files().replaceFile(folder + "a.xml", "new");
    files().moveFile(folder + "a.xml", folder + "b.xml");
    EXPECT_TRUE(files().fileExists(folder + "b.xml"));
    EXPECT_EQ(files().readFile(folder + "b.xml"), "new");
    files().removeFile(folder + "b.xml");
    EXPECT_EQ(base::errorNumber([&] { (void)files().readFile(folder + "b.xml"); }), 53);
}

TEST_P(FileSystemContract, AppendingMakesAndLengthensFilesAndSizesFollow) {
    files().createFolder(in("folder"));
    files().appendFile(in("log.txt"), "one\r\n");
    files().appendFile(in("log.txt"), "");
    files().appendFile(in("log.txt"), everyByte());
    EXPECT_EQ(files().readFile(in("log.txt")), "one\r\n" + everyByte());
    EXPECT_EQ(files().fileSize(in("log.txt")), 5 + everyByte().size());

    world().setReadOnly(in("log.txt"), true);
    struct Row {
        std::string path;
        int append;
        int size;
    };
    const std::vector<Row> rows = {{in("log.txt"), 75, 0},
                                   {in("folder"), 75, 75},
                                   {in("missing\\a.txt"), 76, 76},
                                   {in("log.txt\\a.txt"), 76, 76},
                                   {in("missing.txt"), 0, 53}};
    for (const Row& row : rows) {
        EXPECT_EQ(base::errorNumber([&] { (void)files().fileSize(row.path); }), row.size) << row.path;
        EXPECT_EQ(base::errorNumber([&] { files().appendFile(row.path, "x"); }), row.append) << row.path;
    }
    world().setReadOnly(in("log.txt"), false);
    if (world().lock(in("log.txt"))) {
        EXPECT_EQ(base::errorNumber([&] { files().appendFile(in("log.txt"), "x"); }), 70);
        world().unlock(in("log.txt"));
    }
    EXPECT_EQ(files().fileSize(in("log.txt")), 5 + everyByte().size());
}

TEST_P(FileSystemContract, AskingWhetherAFileCanBeWrittenChangesNothing) {
    files().createFolder(in("folder"));
    files().replaceFile(in("report.csv"), "old");
    files().requireWritable(in("report.csv"));
    files().requireWritable(in("new.csv"));
    EXPECT_EQ(files().readFile(in("report.csv")), "old");
    EXPECT_FALSE(files().fileExists(in("new.csv")));
    EXPECT_EQ(base::errorNumber([&] { files().requireWritable(in("folder")); }), 75);
    EXPECT_EQ(base::errorNumber([&] { files().requireWritable(in("missing\\new.csv")); }), 76);
    world().setReadOnly(in("report.csv"), true);
    EXPECT_EQ(base::errorNumber([&] { files().requireWritable(in("report.csv")); }), 75);
    world().setReadOnly(in("report.csv"), false);
    if (world().lock(in("report.csv"))) {
        EXPECT_EQ(base::errorNumber([&] { files().requireWritable(in("report.csv")); }), 70);
        world().unlock(in("report.csv"));
    }
}

} // namespace
} // namespace contracts
