// Colours for painting.
#pragma once

#include "ui/color.h"

#include <windows.h>

namespace windows {

// A system colour is looked up now: a person may change it at any time.
[[nodiscard]] inline COLORREF toColorRef(ui::Color color) noexcept {
    constexpr ui::Color kSystemColor = 0x80000000;
    return (color & kSystemColor) != 0 ? GetSysColor(static_cast<int>(color & 0xFF)) : color & 0xFFFFFF;
}

} // namespace windows
