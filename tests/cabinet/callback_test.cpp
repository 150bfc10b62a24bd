// The conversation with the library, notification by notification, as no real cabinet brings it about.
#include "cabinet/cabinet_fixture.h"
#include "cabinet/error_texts.h"
#include "fakes/scripted_cabinet_api.h"

namespace {

namespace api = ports::cabinet;
using cabinet_test::CabinetFixture;
using cabinet_test::Lines;

class CallbackTest : public testing::Test {
protected:
    CallbackTest() { test.cabinet->CabName = "C:\\data\\\xC3\xA9.cab"; }

    static std::uint32_t found(ports::CabinetCallback& callback, std::uint32_t mode, ports::FileInCabinet& file) {
        return callback.fileCallback(mode, {api::kFileInCabinet, &file, nullptr});
    }
    static std::uint32_t extracted(ports::CabinetCallback& callback, const ports::FileInCabinet& file,
                                   std::uint32_t error = 0) {
        const ports::FilePaths paths{file.fullTargetName, error};
        return callback.fileCallback(2, {api::kFileExtracted, nullptr, &paths});
    }
    std::string extract(const std::string& folder = "C:\\out", const std::string& newName = "") {
        return test.errorOf([&] { return test.cabinet->Extract("", folder, newName); });
    }

    fakes::ScriptedCabinetApi library;
    fakes::FakeFileSystem files;
    fakes::FakeCodePage ansi;
    CabinetFixture test{library, files, ansi};
};

TEST_F(CallbackTest, AnswersByModeAndNotification) {
    ports::FileInCabinet file{"a.txt", 3, 0, 0, 0, {}};
    cabinet::modCallback nobody;
    EXPECT_EQ(found(nobody, 2, file), 0U); // an empty slot

    library.script = [&](std::uint32_t mode, ports::CabinetCallback& callback) {
        EXPECT_EQ(found(callback, mode, file), mode == 2 ? api::kCopy : api::kSkip);
        EXPECT_EQ(callback.fileCallback(mode, {api::kNeedNewCabinet, nullptr, nullptr}), 0U);
        EXPECT_EQ(callback.fileCallback(mode, {0x10, nullptr, nullptr}), 0U);
        return 0U;
    };
    EXPECT_EQ(test.cabinet->FileCount(), 1);
    EXPECT_EQ(library.lastPath, "C:\\data\\\xE9.cab");
    (void)test.cabinet->GetInfo("");
    (void)test.cabinet->GetXML("");
    EXPECT_EQ(extract(), "");
    EXPECT_EQ(found(test.callback, 4, file), 0U);
    library.present = false;
    EXPECT_FALSE(test.cabinet->SetuAPIisPresent());
}

TEST_F(CallbackTest, TheSlotKeepsTheLastObjectAlive) {
    auto other = test.make();
    const std::weak_ptr<cabinet::clsCABFile> watch = other;
    other->CabName = "C:\\other.cab";
    (void)other->FileCount();
    other.reset();
    EXPECT_FALSE(watch.expired());
    ports::FileInCabinet file{"a.txt", 3, 0, 0, 0, {}};
    EXPECT_EQ(found(test.callback, 0, file), api::kSkip);
    (void)test.cabinet->FileCount();
    EXPECT_TRUE(watch.expired());
}

TEST_F(CallbackTest, TheFirstErrorOfAFileIsRaisedEvenByALibraryThatGoesOn) {
    library.script = [&](std::uint32_t mode, ports::CabinetCallback& callback) {
        ports::FileInCabinet first{"first.txt", 0, 0, 0, 0, {}};
        EXPECT_EQ(found(callback, mode, first), api::kCopy);
        EXPECT_EQ(extracted(callback, first, 29), 29U);
        ports::FileInCabinet second{"second.txt", 0, 0, 0, 0, {}};
        EXPECT_EQ(found(callback, mode, second), api::kSkip);
        return 0U;
    };
    EXPECT_EQ(extract(), "29|CabFile|clsCabFile.Extract: The system cannot write to the specified device.");
    EXPECT_EQ(test.events.lines, Lines{"before first.txt"});
}

TEST_F(CallbackTest, AFileThatCameOutShortIsRemovedAndAnOldOneIsNot) {
    struct Row {
        std::string name, bytes;
        bool reported, readOnly, survives;
        std::uint32_t libraryError;
        std::string error;
    };
    const std::string invalid = "13|CabFile|clsCabFile.Extract: Invalid data.";
    const std::vector<Row> rows = {
        {"whole", "12345", true, false, true, 0, ""},
        {"longer", "123456", true, false, true, 0, ""},
        {"short", "1234", true, false, false, 0, invalid},
        {"broke off", "1234", false, false, false, 112,
         "112|CabFile|clsCabFile.Extract: There is not enough space on the disk."},
        {"broke off in silence", "", false, false, false, 0, invalid},
        {"never opened", "old", false, true, true, 5, "5|CabFile|clsCabFile.Extract: Access is denied."},
    };
    for (const Row& row : rows) {
        library.script = [&](std::uint32_t mode, ports::CabinetCallback& callback) {
            ports::FileInCabinet file{"a.txt", 5, 0, 0, 0, {}};
            EXPECT_EQ(found(callback, mode, file), api::kCopy);
            files.addFile(file.fullTargetName, row.bytes);
            files.setReadOnly(file.fullTargetName, row.readOnly);
            if (row.reported) {
                (void)extracted(callback, file);
            }
            return row.libraryError;
        };
        test.events.lines.clear();
        EXPECT_EQ(extract(), row.error) << row.name;
        EXPECT_EQ(files.hasFile("C:\\out\\a.txt"), row.survives) << row.name;
        EXPECT_EQ(test.events.lines.size(), row.error.empty() ? 2U : 1U) << row.name;
    }
}

TEST_F(CallbackTest, TargetsArePutTogetherAsGiven) {
    struct Row {
        std::string name, cabinet, folder, newName, target; // target "": skipped
    };
    const std::string exactly(259 - 7, 'n');
    const std::vector<Row> rows = {
        {"sub\\a.txt", "C:\\data\\x.cab", "", "", "C:\\data\\sub\\a.txt"},
        {"a.txt", "x.cab", "", "", "\\a.txt"},
        {"sub\\a.txt", "x.cab", "", "", "\\sub\\a.txt"},
        {"a.txt", "x.cab", "C:\\out\\", "", "C:\\out\\a.txt"},
        {"a.txt", "x.cab", "C:\\out\\\\", "", "C:\\out\\\\a.txt"},
        {"a.txt", "x.cab", "rel", "", "rel\\a.txt"},
        {"sub\\a.txt", "x.cab", "C:", "b.dat", "C:\\b.dat"},
        {"a.txt", "x.cab", "\\\\server\\share", "", "\\\\server\\share\\a.txt"},
        {"a.txt", "x.cab", "\\\\server\\share\\new", "", ""},
        {"a.txt", "x.cab", "C:\\o*t", "", ""},
        {exactly, "x.cab", "C:\\out", "", "C:\\out\\" + exactly},
        {exactly + "n", "x.cab", "C:\\out", "", ""},
        {"\xE9", "x.cab", "C:\\out", "", "C:\\out\\\xE9"},
    };
    for (const Row& row : rows) {
        ports::FileInCabinet file{row.name, 0, 0, 0, 0, {}};
        library.script = [&](std::uint32_t mode, ports::CabinetCallback& callback) {
            EXPECT_EQ(found(callback, mode, file), row.target.empty() ? api::kSkip : api::kCopy) << row.folder;
            return 0U;
        };
        test.cabinet->CabName = row.cabinet;
        EXPECT_EQ(extract(row.folder, row.newName), "") << row.folder;
        EXPECT_EQ(file.fullTargetName, row.target);
    }
}

TEST_F(CallbackTest, ATraceThatCannotBeWrittenStopsNothing) {
    test.logFiles.addFile("C:\\QuorvantisLog.txt", "");
    test.logFiles.lock("C:\\QuorvantisLog.txt");
    EXPECT_EQ(extract(), "");
    library.script = [](std::uint32_t, ports::CabinetCallback&) { return 5U; };
    EXPECT_EQ(extract(), "5|CabFile|clsCabFile.Extract: Access is denied.");
    library.script = [](std::uint32_t, ports::CabinetCallback&) { return 6U; };
    EXPECT_EQ(extract(), "6|CabFile|clsCabFile.Extract: Unknown error.");
    test.logFiles.unlock("C:\\QuorvantisLog.txt");
    EXPECT_EQ(test.log(), "");
}

} // namespace
