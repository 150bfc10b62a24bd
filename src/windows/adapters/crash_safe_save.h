// Saving a file so that a process killed at any instant leaves the old file or the new one, whole.
#pragma once

#include "windows/base/retry.h"

#include <string>
#include <string_view>

namespace windows {

// Writes `path`.tmp, flushes it and moves it over `path` in one step; a stray temporary file of an earlier save is
// written over. The target keeps its own access rights where the system allows.
// Written in place instead, without that promise: a target that may be written but not replaced, either because the
// folder takes no new files or because the target may not be deleted.
// Raises what ports::FileSystem::replaceFile does; the old file is then untouched and the temporary one gone. What
// stands in the temporary file's place and is not ours to write (a folder, a read-only file) raises 75.
void crashSafeSave(const std::wstring& path, std::string_view bytes, const Pause& pause);

} // namespace windows
