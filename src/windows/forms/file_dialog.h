// The platform's dialog for picking one file.
#pragma once

#include "ui/desktop.h"

#include <string>

#include <windows.h>

namespace windows {

// As ui::Desktop::openFile, modal to `owner` (may be null).
[[nodiscard]] std::string chooseFile(HWND owner, const ui::OpenFileRequest& request);

} // namespace windows
