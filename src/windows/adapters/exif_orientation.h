// How a camera was held, read from a JPEG file's own header: not every system's decoder answers that question.
#pragma once

#include <string_view>

namespace windows {

// The EXIF orientation of a JPEG file, 1 (upright) to 8, from its first bytes (64 KB hold it in any camera's file).
// 1 when it is not stated, or when anything about the header is odd.
[[nodiscard]] int exifOrientation(std::string_view jpegStart) noexcept;

} // namespace windows
