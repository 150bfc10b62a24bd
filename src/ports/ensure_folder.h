// The folders that extracted files go into.
#pragma once

#include "ports/file_system.h"

#include <string_view>

namespace ports {

// Makes one folder unless it is there; raises what FileSystem::createFolder does.
void requireFolder(FileSystem& files, std::string_view folder);

// Makes the folder (with or without its final backslash) and the folders above it where they are missing. False when
// one of them cannot be made; out of memory is raised. No folder, a root, a drive and a network share count as there.
[[nodiscard]] bool ensureFolder(FileSystem& files, std::string_view folder);

} // namespace ports
