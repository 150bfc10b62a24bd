#include "contracts/file_system_contract.h"

#include "contracts/error_number.h"

#include <algorithm>
#include <string>
#include <vector>

namespace contracts {
namespace {

std::string everyByte() {
    std::string bytes;
    for (int i = 0; i < 256; ++i) {
        bytes.push_back(static_cast<char>(static_cast<unsigned char>(i)));
    }
    return bytes;
}

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
        EXPECT_EQ(errorNumber([&] { (void)files().readFile(row.path); }), row.read) << row.path;
        EXPECT_EQ(errorNumber([&] { files().replaceFile(row.path, "new"); }), row.replace) << row.path;
        EXPECT_EQ(errorNumber([&] { files().removeFile(row.path); }), row.remove) << row.path;
    }
    EXPECT_EQ(errorNumber([&] { files().removeFile(in("missing.txt")); }), 53);
    if (world().isWindowsLike()) {
        for (const char* name : {"a<b.txt", "a*b.txt", "a\"b.txt", "a|b.txt"}) {
            EXPECT_EQ(errorNumber([&] { (void)files().readFile(in(name)); }), 52) << name;
            EXPECT_EQ(errorNumber([&] { files().replaceFile(in(name), "new"); }), 52) << name;
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
    EXPECT_EQ(errorNumber([&] { files().replaceFile(in("a.xml"), "new"); }), 75);
    EXPECT_EQ(errorNumber([&] { files().removeFile(in("a.xml")); }), 75);
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
    EXPECT_EQ(errorNumber([&] { (void)files().readFile(in("a.xml")); }), 70);
    EXPECT_EQ(errorNumber([&] { files().replaceFile(in("a.xml"), "new"); }), 70);
    EXPECT_EQ(errorNumber([&] { files().removeFile(in("a.xml")); }), 70);
    EXPECT_EQ(errorNumber([&] { files().moveFile(in("a.xml"), in("b.xml")); }), 70);
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
    EXPECT_EQ(errorNumber([&] { files().replaceFile(in("a.xml"), "new"); }), 75);
    EXPECT_TRUE(files().folderExists(in("a.xml.tmp")));
    EXPECT_EQ(files().readFile(in("a.xml")), "old");

    files().replaceFile(in("b.xml"), "old");
    files().replaceFile(in("b.xml.tmp"), "theirs");
    if (world().lock(in("b.xml.tmp"))) {
        EXPECT_EQ(errorNumber([&] { files().replaceFile(in("b.xml"), "new"); }), 70);
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
    EXPECT_EQ(errorNumber([&] { files().replaceFile(in("a.xml"), std::string(100'000, 'n')); }), 61);
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
        EXPECT_EQ(errorNumber([&] { files().replaceFile(in("shut\\a.xml"), bytes); }), 0);
        expectUntouched(in("shut\\a.xml"), bytes);
    }
    EXPECT_EQ(errorNumber([&] { files().replaceFile(in("shut\\new.xml"), "x"); }), 75);
    EXPECT_EQ(errorNumber([&] { files().createFolder(in("shut\\new")); }), 75);
    world().allowCreation(in("shut"));
}

TEST_P(FileSystemContract, MovesNeverReplaceAndNeverLose) {
    files().createFolder(in("folder"));
    files().replaceFile(in("a.xml"), "a");
    files().replaceFile(in("b.xml"), "b");
    struct Row {
        std::string from, to;
        int error;
    };
    const std::vector<Row> rows = {
        {in("a.xml"), in("b.xml"), 75},          {in("a.xml"), in("folder"), 75},
        {in("a.xml"), in("missing\\a.xml"), 76}, {in("missing.xml"), in("c.xml"), 53},
        {in("missing\\a.xml"), in("c.xml"), 76}, {in("folder"), in("elsewhere"), 75},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(errorNumber([&] { files().moveFile(row.from, row.to); }), row.error) << row.from << " -> " << row.to;
    }
    EXPECT_EQ(files().readFile(in("a.xml")), "a");
    EXPECT_EQ(files().readFile(in("b.xml")), "b");
    files().moveFile(in("a.xml"), in("folder\\c.xml"));
    EXPECT_FALSE(files().fileExists(in("a.xml")));
    EXPECT_EQ(files().readFile(in("folder\\c.xml")), "a");
}

TEST_P(FileSystemContract, MovesOverAnExistingFileLeaveOneOfTheTwo) {
    files().createFolder(in("folder"));
    files().replaceFile(in("new.xml"), "new");
    files().replaceFile(in("old.xml"), "old");
    files().replaceFile(in("kept.xml"), "kept");
    world().setReadOnly(in("kept.xml"), true);
    struct Row {
        std::string from, to;
        int error;
    };
    const std::vector<Row> rows = {
        {in("missing.xml"), in("old.xml"), 53}, {in("new.xml"), in("missing\\old.xml"), 76},
        {in("new.xml"), in("folder"), 75},      {in("folder"), in("old.xml"), 75},
        {in("new.xml"), in("kept.xml"), 75},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(errorNumber([&] { files().moveOver(row.from, row.to); }), row.error) << row.from << " -> " << row.to;
    }
    world().setReadOnly(in("kept.xml"), false);
    files().moveOver(in("new.xml"), in("old.xml"));
    EXPECT_FALSE(files().fileExists(in("new.xml")));
    EXPECT_EQ(files().readFile(in("old.xml")), "new");
    files().moveOver(in("old.xml"), in("third.xml"));
    EXPECT_EQ(files().readFile(in("third.xml")), "new");
}

TEST_P(FileSystemContract, FoldersAreMadeOneAtATime) {
    files().replaceFile(in("file.txt"), "x");
    files().createFolder(in("one\\")); // a final backslash does not matter
    struct Row {
        std::string path;
        int error;
    };
    const std::vector<Row> rows = {{in("one\\two"), 0},      {in("one"), 75},           {in("file.txt"), 75},
                                   {in("missing\\two"), 76}, {in("file.txt\\two"), 76}, {"", 76}};
    for (const Row& row : rows) {
        EXPECT_EQ(errorNumber([&] { files().createFolder(row.path); }), row.error) << row.path;
    }
    EXPECT_TRUE(files().folderExists(in("one\\two")));
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
    EXPECT_EQ(errorNumber([&] { (void)files().readFile(folder + "b.xml"); }), 53);
}

TEST_P(FileSystemContract, CopiesAreWholeOrNotThere) {
    files().createFolder(in("folder"));
    files().replaceFile(in("a.jpg"), everyByte());
    files().replaceFile(in("old.jpg"), "old");
    files().replaceFile(in("kept.jpg"), "kept");
    world().setReadOnly(in("kept.jpg"), true);
    struct Row {
        std::string from, to;
        int error;
    };
    const std::vector<Row> rows = {
        {in("missing.jpg"), in("new.jpg"), 53}, {in("a.jpg"), in("missing\\a.jpg"), 76},
        {in("folder"), in("new.jpg"), 75},      {in("a.jpg"), in("folder"), 75},
        {in("a.jpg"), in("kept.jpg"), 75},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(errorNumber([&] { files().copyFile(row.from, row.to); }), row.error) << row.from << " -> " << row.to;
    }
    EXPECT_FALSE(files().fileExists(in("new.jpg")));
    files().copyFile(in("a.jpg"), in("old.jpg"));
    files().copyFile(in("kept.jpg"), in("new.jpg")); // a read-only file gives an ordinary copy
    files().replaceFile(in("new.jpg"), "changed");
    EXPECT_EQ(files().readFile(in("old.jpg")), everyByte());
    EXPECT_FALSE(files().fileExists(in("old.jpg.tmp")));
    world().setReadOnly(in("kept.jpg"), false);
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
        EXPECT_EQ(errorNumber([&] { (void)files().fileSize(row.path); }), row.size) << row.path;
        EXPECT_EQ(errorNumber([&] { files().appendFile(row.path, "x"); }), row.append) << row.path;
    }
    world().setReadOnly(in("log.txt"), false);
    if (world().lock(in("log.txt"))) {
        EXPECT_EQ(errorNumber([&] { files().appendFile(in("log.txt"), "x"); }), 70);
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
    EXPECT_EQ(errorNumber([&] { files().requireWritable(in("folder")); }), 75);
    EXPECT_EQ(errorNumber([&] { files().requireWritable(in("missing\\new.csv")); }), 76);
    world().setReadOnly(in("report.csv"), true);
    EXPECT_EQ(errorNumber([&] { files().requireWritable(in("report.csv")); }), 75);
    world().setReadOnly(in("report.csv"), false);
    if (world().lock(in("report.csv"))) {
        EXPECT_EQ(errorNumber([&] { files().requireWritable(in("report.csv")); }), 70);
        world().unlock(in("report.csv"));
    }
}

TEST_P(FileSystemContract, ListingsHoldFilesAndFoldersOnce) {
    files().createFolder(in("list"));
    files().createFolder(in("list\\sub"));
    files().replaceFile(in("list\\sub\\inner.jpg"), "");
    files().replaceFile(in("list\\\xC3\xA9t\xC3\xA9.jpg"), "");
    files().replaceFile(in("list\\b.jpg"), "");
    for (const char* spelling : {"list", "list\\"}) {
        std::vector<std::string> found;
        files().listFolder(in(spelling), [&](const ports::FolderEntry& entry) {
            found.push_back(entry.isFolder ? "[folder]" : entry.name);
            return true;
        });
        std::sort(found.begin(), found.end());
        EXPECT_EQ(found, (std::vector<std::string>{"[folder]", "b.jpg", "\xC3\xA9t\xC3\xA9.jpg"})) << spelling;
    }
    int visits = 0;
    files().listFolder(in("list"), [&](const ports::FolderEntry&) { return ++visits < 2; });
    EXPECT_EQ(visits, 2);
    EXPECT_EQ(errorNumber([&] { files().listFolder(in("missing"), [](const auto&) { return true; }); }), 76);
    EXPECT_TRUE(files().folderExists(files().currentFolder()));
    EXPECT_FALSE(files().drives().empty());
}

} // namespace
} // namespace contracts
