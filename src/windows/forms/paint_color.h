// Colours for painting.
#pragma once

#include "ui/color.h"

#include <windows.h>

namespace windows {

[[nodiscard]] inline bool isSystemColor(ui::Color color) noexcept {
    return (color & 0x80000000U) != 0;
}

[[nodiscard]] inline int systemColorIndex(ui::Color color) noexcept {
    return static_cast<int>(color & 0xFFU);
}

// A system colour is looked up now: a person may change it at any time.
[[nodiscard]] inline COLORREF toColorRef(ui::Color color) noexcept {
    return isSystemColor(color) ? GetSysColor(systemColorIndex(color)) : color & 0xFFFFFFU;
}

} // namespace windows
