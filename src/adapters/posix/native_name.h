// Where on this machine a Windows path lies.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace adapters {

// <root>/a/b for C:\a\b, whatever the drive. Raises 76 for no name and for a network path, 52 for a name with a colon
// elsewhere or a null character.
[[nodiscard]] std::string nativeName(const std::filesystem::path& root, std::string_view path);

} // namespace adapters
