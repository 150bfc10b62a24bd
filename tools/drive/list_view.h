// Reads a list view of another process.
#pragma once

#include <windows.h>

#include <string>
#include <vector>

namespace drive {

// One text a row: "+" for a ticked one, else "-", then its cells with "|" between them. Throws Failure when the other
// process cannot be read.
[[nodiscard]] std::vector<std::string> rowsOf(HWND listView);

} // namespace drive
