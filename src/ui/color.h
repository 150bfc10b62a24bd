// Colours as automation hosts give them.
#pragma once

#include <cstdint>

namespace ui {

// Red in the lowest byte, then green, then blue; or, with the top bit set, the index of a system colour, which is
// translated when it is painted.
using Color = std::uint32_t;

namespace color {
inline constexpr Color kWindowBackground = 0x80000005;
inline constexpr Color kWindowText = 0x80000008;
inline constexpr Color kButtonFace = 0x8000000F;
inline constexpr Color kLight3d = 0x80000016;
} // namespace color

} // namespace ui
