// Real key strokes, which go to whatever window is in the foreground.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace drive {

// One key with the modifiers held meanwhile, such as "Alt+A", "Shift+Tab", "Enter".
struct Stroke {
    std::vector<std::uint8_t> modifiers; // virtual key codes
    std::uint8_t key = 0;
};

// Throws Failure for a name that is no key.
[[nodiscard]] Stroke parseStroke(std::string_view name);

void press(const Stroke& stroke);

} // namespace drive
