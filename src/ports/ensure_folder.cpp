#include "ports/ensure_folder.h"

#include "base/attempt.h"

#include <algorithm>
#include <cstdint>

namespace ports {
namespace {

namespace error = base::error;

constexpr std::int32_t kMade = 0;

std::int32_t tryCreate(FileSystem& files, std::string_view folder) {
    const auto failure = base::attempt([&] { files.createFolder(folder); });
    return failure ? failure->number() : kMade;
}

// 75 says that the folder is there already. It also says that access was denied: extracting a file then fails and says
// why, which a folder passed over in silence would not.
bool isThere(std::int32_t outcome) noexcept {
    return outcome == kMade || outcome == error::kPathFileAccess;
}

// The length of the part in front that nobody can make: "C:", the empty element of "\a", "\\server\share".
std::size_t lengthOfRoot(std::string_view folder) noexcept {
    if (folder.starts_with("\\\\")) {
        const std::size_t share = folder.find('\\', 2);
        return share == folder.npos ? folder.size() : std::min(folder.find('\\', share + 1), folder.size());
    }
    return folder.size() >= 2 && folder[1] == ':' ? 2 : 0;
}

} // namespace

void requireFolder(FileSystem& files, std::string_view folder) {
    if (!files.folderExists(folder)) {
        files.createFolder(folder);
    }
}

bool ensureFolder(FileSystem& files, std::string_view folder) {
    if (folder.ends_with('\\')) {
        folder.remove_suffix(1);
    }
    std::size_t end = lengthOfRoot(folder);
    if (end == folder.size()) {
        return true;
    }
    const std::int32_t outcome = tryCreate(files, folder);
    if (outcome != error::kPathNotFound) {
        return isThere(outcome);
    }
    while (end < folder.size()) {
        end = std::min(folder.find('\\', end + 1), folder.size());
        if (!isThere(tryCreate(files, folder.substr(0, end)))) {
            return false;
        }
    }
    return true;
}

} // namespace ports
