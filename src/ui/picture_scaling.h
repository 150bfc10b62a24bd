// Shrinks pictures for display.
#pragma once

#include "base/picture.h"

#include <cstdint>

namespace ui {

// The picture shrunk to fit maxWidth x maxHeight pixels, keeping its proportions and at least one pixel each way; each
// pixel is the mean of those it stands for. A picture that fits keeps its size. Empty when either maximum is below 1.
[[nodiscard]] base::Picture shrinkToFit(const base::Picture& picture, int maxWidth, int maxHeight);

// The picture laid onto an opaque background colour (0x00RRGGBB); every pixel comes out with alpha 255.
[[nodiscard]] base::Picture blendOnto(base::Picture picture, std::uint32_t background);

} // namespace ui
