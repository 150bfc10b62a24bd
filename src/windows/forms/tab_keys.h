// The keys that switch tabs from anywhere on a form, which the dialog manager does not know.
#pragma once

#include "ui/tab_strip.h"

#include <cstddef>
#include <optional>

#include <windows.h>

namespace windows {

// The tab that a message asks for: Ctrl+Tab and Ctrl+Page Down the next, with Shift, or Page Up, the one before, round
// and round; Alt and a title's mnemonic letter that one. None when it is no such key.
[[nodiscard]] std::optional<std::size_t> tabAskedFor(const MSG& message, const ui::TabStrip& strip);

} // namespace windows
