// Who vouches for a program file, by its embedded signature and the user's authorities.
#pragma once

#include "ports/programs.h"

#include <string>

#include <windows.h>

namespace windows {

// `file` is that path, open for reading, and nobody can change it meanwhile. No network is asked.
[[nodiscard]] ports::Signature signatureOf(const std::wstring& path, HANDLE file);

} // namespace windows
