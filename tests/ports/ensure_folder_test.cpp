// Making the folder of an extracted file.
#include "ports/ensure_folder.h"

#include "base/runtime_error.h"
#include "fakes/fake_file_system.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

TEST(TargetFolder, MissingFoldersAreMadeFromTheTopOn) {
    struct Row {
        std::string folder;
        bool there;
        std::vector<std::string> operations;
    };
    const std::vector<Row> rows = {
        {"", true, {}},
        {"\\", true, {}},
        {"C:\\", true, {}},
        {"\\\\server\\share\\", true, {}},
        {"C:\\a", true, {"createFolder C:\\a"}},
        {"C:\\a\\", true, {"createFolder C:\\a !75"}},
        {"\\out\\sub\\", true, {"createFolder \\out\\sub !76", "createFolder \\out", "createFolder \\out\\sub"}},
        {"C:\\a\\b\\c\\",
         true,
         {"createFolder C:\\a\\b\\c !76", "createFolder C:\\a !75", "createFolder C:\\a\\b",
          "createFolder C:\\a\\b\\c"}},
        {"rel\\b", true, {"createFolder rel\\b !76", "createFolder rel", "createFolder rel\\b"}},
        {"C:\\denied\\x", true, {"createFolder C:\\denied\\x !75"}}, // extracting then says why
        {"C:\\a?\\b", false, {"createFolder C:\\a?\\b !52"}},
        {"Q:\\a\\b", false, {"createFolder Q:\\a\\b !76", "createFolder Q:\\a !76"}},
        {"\\\\server\\share\\a",
         false,
         {"createFolder \\\\server\\share\\a !76", "createFolder \\\\server\\share\\a !76"}},
    };
    fakes::FakeFileSystem files;
    files.addFolder("C:\\denied");
    files.denyCreation("C:\\denied");
    for (const Row& row : rows) {
        files.clearOperations();
        EXPECT_EQ(ports::ensureFolder(files, row.folder), row.there) << row.folder;
        EXPECT_EQ(files.operations(), row.operations) << row.folder;
    }
}

} // namespace
