// Lengths as containers tell them, in hundredths of a millimetre, and as windows have them, in pixels.
#pragma once

#include "windows/forms/dpi.h"

#include <windows.h>

namespace windows::com {

// Dots per inch.
struct Resolution {
    int x;
    int y;
};

inline constexpr int kHimetricPerInch = 2540;

// Of the screen as containers on this thread reckon it.
[[nodiscard]] inline Resolution screenResolution() noexcept {
    const HDC screen = GetDC(nullptr);
    const Resolution resolution{GetDeviceCaps(screen, LOGPIXELSX), GetDeviceCaps(screen, LOGPIXELSY)};
    ReleaseDC(nullptr, screen);
    return resolution;
}

[[nodiscard]] inline SIZEL toHimetric(SIZE pixels, Resolution resolution) noexcept {
    return {MulDiv(pixels.cx, kHimetricPerInch, resolution.x), MulDiv(pixels.cy, kHimetricPerInch, resolution.y)};
}

[[nodiscard]] inline SIZE toPixels(SIZEL himetric, Resolution resolution) noexcept {
    return {MulDiv(himetric.cx, resolution.x, kHimetricPerInch), MulDiv(himetric.cy, resolution.y, kHimetricPerInch)};
}

} // namespace windows::com
