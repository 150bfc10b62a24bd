// Paths as the system's wide functions take them.
#pragma once

#include <string>
#include <string_view>

namespace windows {

// The path in UTF-16, as given; one that is too long for the ordinary functions gets its full form behind the prefix
// that lifts their limit of 260 characters. Raises 52 for a name with a null character, which the system's functions
// would cut short and so take for another file.
[[nodiscard]] std::wstring nativePath(std::string_view path);

} // namespace windows
