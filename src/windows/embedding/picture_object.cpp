#include "windows/embedding/picture_object.h"

#include <ocidl.h>
#include <olectl.h>
#include <wrl/client.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <vector>

namespace windows::com {
namespace {

using Microsoft::WRL::ComPtr;

constexpr int kHundredthMillimetresPerInch = 2540;
constexpr int kPixelsPerInch = 96;

// A bitmap in memory to draw on, top row first.
class Canvas {
public:
    Canvas(int width, int height) : m_count(static_cast<std::size_t>(width) * static_cast<std::size_t>(height)) {
        BITMAPINFO info{};
        info.bmiHeader.biSize = sizeof info.bmiHeader;
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = -height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        m_bitmap = CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &m_bits, nullptr, 0);
        m_context = CreateCompatibleDC(nullptr);
        m_previous = SelectObject(m_context, m_bitmap);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;
    ~Canvas() {
        SelectObject(m_context, m_previous);
        DeleteDC(m_context);
        DeleteObject(m_bitmap);
    }

    [[nodiscard]] explicit operator bool() const noexcept { return m_bits != nullptr && m_context != nullptr; }
    [[nodiscard]] HDC context() const noexcept { return m_context; }
    // Sets every byte.
    void fill(std::uint8_t value) { std::memset(m_bits, value, m_count * sizeof(std::uint32_t)); }
    [[nodiscard]] std::vector<std::uint32_t> pixels() const {
        GdiFlush();
        const auto* const first = static_cast<const std::uint32_t*>(m_bits);
        return {first, first + m_count};
    }

private:
    std::size_t m_count;
    void* m_bits = nullptr;
    HBITMAP m_bitmap = nullptr;
    HDC m_context = nullptr;
    HGDIOBJ m_previous = nullptr;
};

// Without its alpha byte, which drawing leaves undefined.
constexpr std::uint32_t kColour = 0x00FFFFFF;

// How much of the ground shows through tells the alpha value: drawn on black and on white, an opaque point looks the
// same, a transparent one does not.
std::uint32_t withAlpha(std::uint32_t onBlack, std::uint32_t onWhite) {
    const auto green = [](std::uint32_t pixel) { return (pixel >> 8U) & 0xFFU; };
    const std::uint32_t alpha = 0xFFU - (green(onWhite) - std::min(green(onWhite), green(onBlack)));
    return (alpha << 24U) | (onBlack & kColour);
}

std::optional<std::vector<std::uint32_t>> drawn(IPicture& picture, SIZE extent, int width, int height) {
    Canvas canvas(width, height);
    if (!canvas) {
        return std::nullopt;
    }
    // The picture's own axis points upwards.
    const auto draw = [&](std::uint8_t ground) {
        canvas.fill(ground);
        return picture.Render(canvas.context(), 0, 0, width, height, 0, extent.cy, extent.cx, -extent.cy, nullptr);
    };
    if (FAILED(draw(0x00))) {
        return std::nullopt;
    }
    std::vector<std::uint32_t> pixels = canvas.pixels();
    if (FAILED(draw(0xFF))) {
        return std::nullopt;
    }
    std::ranges::transform(pixels, canvas.pixels(), pixels.begin(), withAlpha);
    return pixels;
}

} // namespace

std::shared_ptr<const base::Picture> pixelsOf(IUnknown* object, int limit) {
    ComPtr<IPicture> picture;
    SIZE extent{};
    if (object == nullptr || FAILED(object->QueryInterface(IID_PPV_ARGS(&picture))) ||
        FAILED(picture->get_Width(&extent.cx)) || FAILED(picture->get_Height(&extent.cy)) || extent.cx <= 0 ||
        extent.cy <= 0) {
        return nullptr;
    }
    const double pixels = static_cast<double>(kPixelsPerInch) / kHundredthMillimetresPerInch;
    const double scale = std::min(pixels, static_cast<double>(limit) / std::max(extent.cx, extent.cy));
    const auto side = [&](LONG length) {
        return std::clamp(static_cast<int>(static_cast<double>(length) * scale + 0.5), 1, limit);
    };
    base::Picture result{side(extent.cx), side(extent.cy), {}};
    auto drawing = drawn(*picture.Get(), extent, result.width, result.height);
    if (!drawing) {
        return nullptr;
    }
    result.pixels = *std::move(drawing);
    return std::make_shared<const base::Picture>(std::move(result));
}

} // namespace windows::com
