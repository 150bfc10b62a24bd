// A folder's listing must answer as the system does, whatever is asked: names that differ in case, accents, blanks,
// dots, wildcards, short names, device names.
#include "contracts/scratch_folder.h"
#include "fakes/silent_run.h"
#include "images/folder_files.h"
#include "windows/adapters/windows_file_system.h"
#include "windows/base/wide.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <random>
#include <string>
#include <vector>

namespace {

std::size_t pick(std::mt19937& random, std::size_t size) {
    return random() % size;
}

// What codes and links are made of, and what makes systems disagree about names.
std::string randomName(std::mt19937& random) {
    static const std::vector<std::string> kPieces = {
        "A",       "b", "GEAR", "gear", "20",       "_1",       ".JPG",     ".jpg",         ".",  "..", " ", "%",
        "^",       "&", "'",    "-",    "\xC3\xA9", "\xC3\x89", "\xC3\x9F", "\xE4\xBA\xA7", "~1", "*",  "?", "CON",
        "nul.jpg", "[", "\x01", "|",    "COM1",     ";",        "\\"};
    std::string name;
    for (std::size_t length = pick(random, 5); length > 0; --length) {
        name += kPieces[pick(random, kPieces.size())];
    }
    return name;
}

// More names than in every test run: QVI_FOLDER_NAMES=60000.
int questions() {
    const char* const wanted = std::getenv("QVI_FOLDER_NAMES");
    return wanted == nullptr ? 3'000 : std::atoi(wanted);
}

TEST(FolderFiles, AnswersAsTheSystemDoes) {
    const contracts::ScratchFolder scratch;
    const std::string folder = windows::fromWide(scratch.path().wstring());
    windows::WindowsFileSystem files;
    std::mt19937 random(20'261'123);
    std::vector<std::string> made = {std::string(251, 'n') + ".JPG", "Gear front with a long name.jpg"};
    for (int i = 0; i < 200; ++i) {
        made.push_back(randomName(random));
    }
    for (const std::string& name : made) {
        try {
            files.replaceFile(folder + "\\" + name, "");
        } catch (const std::exception&) { // no name for a file
        }
    }
    files.createFolder(folder + "\\FOLDER.JPG");
    fakes::SilentRun run;
    images::FolderFiles listed(files, folder);
    ASSERT_TRUE(listed.list(run));
    EXPECT_GT(listed.upperNames().size(), 60U);

    std::vector<std::string> asked = {"", "folder.jpg", "gear front with a long name.JPG", "GEARFR~1.JPG"};
    asked.insert(asked.end(), made.begin(), made.end());
    for (int i = 0; i < questions(); ++i) {
        asked.push_back(randomName(random));
    }
    for (const std::string& name : asked) {
        EXPECT_EQ(listed.contains(name), !name.empty() && files.fileExists(folder + "\\" + name)) << "'" << name << "'";
    }
}

} // namespace
