// A decoded picture as plain pixels.
#pragma once

#include <cstdint>
#include <vector>

namespace base {

struct Picture {
    int width = 0;  // pixels
    int height = 0; // pixels
    // Rows from top to bottom without padding, one 0xAARRGGBB value a pixel, colours multiplied by alpha.
    std::vector<std::uint32_t> pixels;
};

} // namespace base
