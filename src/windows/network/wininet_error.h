// WinInet's error numbers in the port's terms.
#pragma once

#include "ports/https.h"

#include <string>

#include <windows.h>

namespace windows {

[[nodiscard]] ports::HttpOutcome::Kind wininetOutcomeKind(DWORD error) noexcept;

// One line: the library's own words where it has some. "" for ERROR_SUCCESS.
[[nodiscard]] std::string wininetErrorText(DWORD error);

} // namespace windows
