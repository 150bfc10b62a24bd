// What every cabinet library behind the port must do, on the real one of this target.
#include "contracts/cabinet_world.h"
#include "fakes/stored_cabinet.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

namespace contracts {
namespace {

namespace api = ports::cabinet;
using fakes::StoredFile;
using Lines = std::vector<std::string>;

class Recorder final : public ports::CabinetCallback {
public:
    std::uint32_t fileCallback(std::uint32_t context,
                               const ports::CabinetNotification& notification) noexcept override {
        EXPECT_EQ(context, 7U);
        if (notification.code == api::kFileInCabinet) {
            ports::FileInCabinet& file = *notification.file;
            seen.push_back(std::string(file.nameInCabinet) + " " + std::to_string(file.size));
            last = file;
            return answer(file);
        }
        if (notification.code == api::kFileExtracted) {
            seen.push_back("extracted " + std::string(notification.paths->target) + " " +
                           std::to_string(notification.paths->win32Error));
        }
        return 0;
    }

    std::function<std::uint32_t(ports::FileInCabinet&)> answer = [](auto&) { return api::kSkip; };
    Lines seen;
    ports::FileInCabinet last;
};

class CabinetApiContract : public testing::Test {
protected:
    [[nodiscard]] std::string in(const std::string& name) const { return world->folder() + name; }

    std::uint32_t walk(const std::string& cabinet) {
        recorder.seen.clear();
        return world->api().iterate(cabinet, 7, recorder);
    }
    std::uint32_t walkBytes(const std::string& bytes) {
        world->files().replaceFile(in("x.cab"), bytes);
        return walk(in("x.cab"));
    }
    void extractTo(const std::string& folder) {
        recorder.answer = [folder](ports::FileInCabinet& file) {
            file.fullTargetName = folder + std::string(file.nameInCabinet);
            return api::kCopy;
        };
    }

    std::unique_ptr<CabinetWorld> world = makeCabinetWorld();
    Recorder recorder;
};

TEST_F(CabinetApiContract, EveryFileIsAskedForOnceInOrder) {
    EXPECT_TRUE(world->api().isPresent());
    EXPECT_EQ(walkBytes(fakes::storedCabinet({{"b.txt", "12"}, {"sub\\a.txt", ""}, {"b.txt", "345"}})), 0U);
    EXPECT_EQ(recorder.seen, (Lines{"b.txt 2", "sub\\a.txt 0", "b.txt 3"}));
    EXPECT_EQ(walkBytes(fakes::storedCabinet({{"\xC3\xA9", "1", 0x5D6F, 0x9906, 0xA0}})), 0U);
    EXPECT_EQ(recorder.last.dosDate, 0x5D6F);
    EXPECT_EQ(recorder.last.dosTime, 0x9906);
    EXPECT_NE(recorder.last.dosAttributes & api::kNameIsUtf8, 0);
    EXPECT_EQ(walkBytes(fakes::storedCabinet({})), 0U);
    EXPECT_EQ(recorder.seen, Lines{});
}

TEST_F(CabinetApiContract, FilesAreExtractedAsAnsweredAndReported) {
    const std::string big(100'000, 'b');
    world->files().replaceFile(in("c.txt"), "a longer file that was there before");
    world->files().replaceFile(in("x.cab"), fakes::storedCabinet({{"a.txt", "a"}, {"b.txt", big}, {"c.txt", "c"}}));
    recorder.answer = [&](ports::FileInCabinet& file) {
        file.fullTargetName = in(std::string(file.nameInCabinet));
        return file.nameInCabinet == "a.txt" ? api::kSkip : api::kCopy;
    };
    EXPECT_EQ(walk(in("x.cab")), 0U);
    EXPECT_EQ(recorder.seen, (Lines{"a.txt 1", "b.txt 100000", "extracted " + in("b.txt") + " 0", "c.txt 1",
                                    "extracted " + in("c.txt") + " 0"}));
    EXPECT_FALSE(world->files().fileExists(in("a.txt")));
    EXPECT_EQ(world->files().readFile(in("b.txt")), big);
    EXPECT_EQ(world->files().readFile(in("c.txt")), "c");
}

// Packed by another program: "gcab -c -z", 3 files of a few KB of text.
TEST_F(CabinetApiContract, CabinetsOfARealPackerUnpack) {
    extractTo(world->folder());
    world->files().createFolder(in("sub"));
    EXPECT_EQ(walk(world->dataFile("cabinets/mszip.cab")), 0U);
    std::string expected;
    for (int line = 1; line <= 2000; ++line) {
        expected += "line " + std::to_string(line) + "\n";
    }
    EXPECT_EQ(world->files().readFile(in("sub\\lines.txt")), expected);
    EXPECT_EQ(world->files().readFile(in("empty.txt")), "");
    EXPECT_EQ(recorder.seen.size(), 6U);
}

TEST_F(CabinetApiContract, WhatIsNoWholeCabinetFails) {
    const std::string whole = fakes::storedCabinet({{"a.txt", std::string(40'000, 'a')}});
    struct Row {
        std::string name, bytes;
    };
    const std::vector<Row> rows = {
        {"empty", ""},
        {"garbage", std::string(5000, 'x')},
        {"only the header", whole.substr(0, 36)},
        {"no data", whole.substr(0, 60)},
        {"half the data", whole.substr(0, 20'000)},
        {"without its end", whole.substr(0, whole.size() - 1)},
        {"goes on in another one", fakes::storedCabinet({{"a.txt", "a"}}, {.goesOn = true})},
        {"wrong checksums", fakes::storedCabinet({{"a.txt", std::string(40'000, 'a')}}, {.wrongChecksums = true})}};
    extractTo(world->folder());
    for (const Row& row : rows) {
        EXPECT_NE(walkBytes(row.bytes), 0U) << row.name;
    }
}

TEST_F(CabinetApiContract, FailuresOutsideTheCabinetHaveTheirNumbers) {
    EXPECT_EQ(walk(in("missing.cab")), 2U);
    EXPECT_EQ(walk(in("missing\\a.cab")), 2U);
    EXPECT_EQ(walk(""), 2U);

    const std::string cabinet = fakes::storedCabinet({{"a.txt", "a"}, {"b.txt", "b"}});
    extractTo(in("missing\\"));
    EXPECT_EQ(walkBytes(cabinet), 3U);
    EXPECT_EQ(recorder.seen, Lines{"a.txt 1"});
    world->files().createFolder(in("a.txt"));
    extractTo(world->folder());
    EXPECT_EQ(walkBytes(cabinet), 5U);
    if (world->fillDiskFor(in("full.txt"))) {
        EXPECT_EQ(walkBytes(fakes::storedCabinet({{"full.txt", "a"}})), 112U);
    }
    if (world->lock(in("x.cab"))) {
        EXPECT_EQ(walk(in("x.cab")), 2U);
    }
}

} // namespace
} // namespace contracts
