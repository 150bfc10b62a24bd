// What is wrong with a cabinet or its destination: the error that is raised, and that nothing half remains.
#include "cabinet/cabinet_fixture.h"
#include "contracts/cabinet_world.h"
#include "fakes/stored_cabinet.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using cabinet_test::CabinetFixture;
using cabinet_test::Lines;

class BrokenCabinetsTest : public testing::Test {
protected:
    [[nodiscard]] std::string in(const std::string& name) const { return world->folder() + name; }
    [[nodiscard]] std::string extract() {
        test.cabinet->CabName = in("x.cab");
        return test.errorOf([&] { return test.cabinet->Extract("", in("out"), ""); });
    }
    // Every file below the destination must be one that was reported as extracted.
    [[nodiscard]] Lines unreported() {
        Lines left;
        if (world->files().folderExists(in("out"))) {
            world->files().listFolder(in("out"), [&](const ports::FolderEntry& entry) {
                const std::string line = "after " + in("out\\") + entry.name;
                if (std::find(test.events.lines.begin(), test.events.lines.end(), line) == test.events.lines.end()) {
                    left.push_back(entry.name);
                }
                return true;
            });
        }
        return left;
    }

    std::unique_ptr<contracts::CabinetWorld> world = contracts::makeCabinetWorld();
    CabinetFixture test{world->api(), world->files(), world->ansi()};
};

TEST_F(BrokenCabinetsTest, NothingHalfRemainsOfThem) {
    const std::string whole =
        fakes::storedCabinet({{"first.txt", "first"}, {"second.txt", std::string(100'000, 's')}, {"third.txt", "t"}});
    struct Row {
        std::string name, bytes;
    };
    const std::vector<Row> rows = {
        {"empty", ""},
        {"garbage", std::string(500, 'x')},
        {"header cut", whole.substr(0, 50)},
        {"data cut", whole.substr(0, 60'000)},
        {"goes on in another one", fakes::storedCabinet({{"a", "a"}}, {.goesOn = true})},
        {"wrong checksums", fakes::storedCabinet({{"a", "a"}}, {.wrongChecksums = true})},
    };
    for (const Row& row : rows) {
        world->files().replaceFile(in("x.cab"), row.bytes);
        EXPECT_EQ(extract(), "13|CabFile|clsCabFile.Extract: Invalid data.") << row.name;
        EXPECT_EQ(unreported(), Lines{}) << row.name;
    }
    EXPECT_EQ(world->files().readFile(in("out\\first.txt")), "first"); // of the one whose data was cut
    EXPECT_FALSE(world->files().fileExists(in("out\\second.txt")));
    world->files().replaceFile(in("out\\second.txt"), std::string(200'000, 'o')); // longer than the new one will be
    world->files().replaceFile(in("x.cab"), whole.substr(0, 60'000));
    EXPECT_EQ(extract(), "13|CabFile|clsCabFile.Extract: Invalid data.");
    EXPECT_FALSE(world->files().fileExists(in("out\\second.txt")));
    EXPECT_THAT(test.log(), testing::EndsWith("\r\n19:08:12,clsCABFile:Extract, Lastdllerror 13,734003200\r\n"));
}

// Each bit of the tables in front, and some of the data: no crash, no hang, nothing outside, nothing unreported.
TEST_F(BrokenCabinetsTest, FlippedBits) {
    const std::string whole =
        fakes::storedCabinet({{"first.txt", "first"}, {"sub\\x.txt", std::string(40'000, 's')}, {"third.txt", "t"}});
    for (std::size_t bit = 0; bit < 8 * 130; bit += 7) {
        std::string bytes = whole;
        bytes[bit / 8] = static_cast<char>(bytes[bit / 8] ^ (1 << bit % 8));
        world->files().replaceFile(in("x.cab"), bytes);
        const std::string error = extract();
        EXPECT_TRUE(error.empty() || error.find("|CabFile|clsCabFile.Extract: ") != error.npos) << bit << " " << error;
        world->files().listFolder(world->folder(), [&](const ports::FolderEntry& entry) {
            EXPECT_TRUE(entry.name == "out" || entry.name == "x.cab") << bit << " " << entry.name;
            return true;
        });
    }
}

TEST_F(BrokenCabinetsTest, FailuresCarryNumberSourceAndText) {
    cabinet::clsCABFile& file = *test.cabinet;
    const std::string unset = "You must set the CabName property before taking any action on the CabFile object.";
    EXPECT_EQ(test.errorOf([&] { return file.FileCount(); }), "-2147219548|CabFile|" + unset);
    EXPECT_EQ(test.errorOf([&] { return file.GetInfo(""); }), "-2147219548|CabFile|" + unset);
    EXPECT_EQ(test.errorOf([&] { return file.GetXML(""); }), "-2147219548|CabFile|" + unset);
    EXPECT_EQ(test.errorOf([&] { return file.Extract("", "", ""); }),
              "-2147219548|CabFile|clsCabFile.Extract: " + unset);
    EXPECT_EQ(test.log(), "19:08:12,clsCABFile:Extract, No file name,734003200\r\n");

    const std::string missing = "The system cannot find the file specified.";
    file.CabName = in("missing.cab");
    EXPECT_EQ(test.errorOf([&] { return file.FileCount(); }), "2|CabFile|" + missing);
    EXPECT_EQ(test.errorOf([&] { return file.GetXML(""); }), "2|CabFile|" + missing);
    EXPECT_EQ(extract(), "2|CabFile|clsCabFile.Extract: " + missing);

    world->files().replaceFile(in("x.cab"), fakes::storedCabinet({{"a.txt", "a"}}));
    world->files().createFolder(in("out"));
    world->files().createFolder(in("out\\a.txt"));
    EXPECT_EQ(extract(), "5|CabFile|clsCabFile.Extract: Access is denied.");
    EXPECT_TRUE(world->files().folderExists(in("out\\a.txt")));
    if (world->lock(in("x.cab"))) {
        EXPECT_EQ(extract(), "2|CabFile|clsCabFile.Extract: " + missing);
    }
}

TEST_F(BrokenCabinetsTest, AFullDiskIsSaid) {
    world->files().createFolder(in("out"));
    if (!world->fillDiskFor(in("out\\a.txt"))) {
        GTEST_SKIP() << "no full disk in this world";
    }
    world->files().replaceFile(in("x.cab"), fakes::storedCabinet({{"a.txt", "a"}}));
    EXPECT_EQ(extract(), "112|CabFile|clsCabFile.Extract: There is not enough space on the disk.");
    EXPECT_EQ(unreported(), Lines{});
}

} // namespace
