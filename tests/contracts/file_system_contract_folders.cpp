// Moving, copying, and listing; making folders.
#include "contracts/file_system_contract.h"

#include "base/error_number.h"

#include <algorithm>
#include <string>
#include <vector>

namespace contracts {
namespace {

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
        EXPECT_EQ(base::errorNumber([&] { files().moveFile(row.from, row.to); }), row.error)
            << row.from << " -> " << row.to;
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
        EXPECT_EQ(base::errorNumber([&] { files().moveOver(row.from, row.to); }), row.error)
            << row.from << " -> " << row.to;
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
        EXPECT_EQ(base::errorNumber([&] { files().createFolder(row.path); }), row.error) << row.path;
    }
    EXPECT_TRUE(files().folderExists(in("one\\two")));
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
        EXPECT_EQ(base::errorNumber([&] { files().copyFile(row.from, row.to); }), row.error)
            << row.from << " -> " << row.to;
    }
    EXPECT_FALSE(files().fileExists(in("new.jpg")));
    files().copyFile(in("a.jpg"), in("old.jpg"));
    files().copyFile(in("kept.jpg"), in("new.jpg")); // a read-only file gives an ordinary copy
    files().replaceFile(in("new.jpg"), "changed");
    EXPECT_EQ(files().readFile(in("old.jpg")), everyByte());
    EXPECT_FALSE(files().fileExists(in("old.jpg.tmp")));
    world().setReadOnly(in("kept.jpg"), false);
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
    EXPECT_EQ(base::errorNumber([&] { files().listFolder(in("missing"), [](const auto&) { return true; }); }), 76);
    EXPECT_TRUE(files().folderExists(files().currentFolder()));
    EXPECT_FALSE(files().drives().empty());
}

} // namespace
} // namespace contracts
