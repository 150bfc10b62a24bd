// The files of one folder, listed once a run, and the question whether a file of some name is there.
#pragma once

#include "images/tool_run.h"
#include "ports/file_system.h"

#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace images {

// Asking the file system for each name costs a scan of the folder on some systems; a listing costs one. The answers are
// the same: a name that the listing cannot answer for (wildcards, separators, trailing dots, device names, ...) is
// asked for really.
class FolderFiles {
public:
    // `folder` without its final backslash. The port is not owned and outlives the object.
    FolderFiles(ports::FileSystem& fileSystem, std::string folder)
        : m_fileSystem(fileSystem), m_folder(std::move(folder)) {}

    // Lists the folder. One that cannot be listed has no files. False when the user ended the run.
    bool list(ToolRun& run);

    // The upper-cased names of the files, sub-folders left out, in the order in which the file system has them.
    [[nodiscard]] const std::vector<std::string>& upperNames() const noexcept { return m_upperNames; }

    // True when the folder holds a file of this name. Folders are no files. Never raises (but 7).
    [[nodiscard]] bool contains(std::string_view name) const;

private:
    ports::FileSystem& m_fileSystem;
    std::string m_folder;
    [[nodiscard]] const std::unordered_set<std::string_view>& known() const;

    std::vector<std::string> m_upperNames;
    std::vector<std::string> m_upperShortNames;
    // Views of both, made at the first question: not every tool asks.
    mutable std::optional<std::unordered_set<std::string_view>> m_known;
};

} // namespace images
