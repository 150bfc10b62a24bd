// Saving a file so that a process killed at any instant leaves the old file or the new one, whole.
#pragma once

#include <string>
#include <string_view>

namespace adapters {

// Writes `name`.tmp, flushes it and moves it over `name`. A target that may be written in a folder that takes no new
// files is written in place. Raises what ports::FileSystem::replaceFile does.
void crashSafeSave(const std::string& name, std::string_view bytes);

} // namespace adapters
