// What a JPEG file's own header says: not every system's decoder answers these questions, or before it decodes.
#pragma once

#include <cstdint>
#include <string_view>

namespace windows {

// The EXIF orientation of a JPEG file, 1 (upright) to 8, from its first bytes (64 KB hold it in any camera's file).
// 1 when it is not stated, or when anything about the header is odd.
[[nodiscard]] int exifOrientation(std::string_view jpegStart) noexcept;

// The number of pixels that a JPEG file announces; 0 when its first bytes do not say.
[[nodiscard]] std::uint64_t jpegPixelCount(std::string_view jpegStart) noexcept;

} // namespace windows
