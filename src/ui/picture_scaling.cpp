#include "ui/picture_scaling.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace ui {
namespace {

// The source range [first, last) that target pixel `index` of `count` stands for; never empty.
struct Span {
    int first;
    int last;
};

Span spanOf(int index, int count, int sourceCount) {
    const auto edge = [&](int at) { return static_cast<int>(static_cast<std::int64_t>(at) * sourceCount / count); };
    const int first = edge(index);
    return {first, std::max(edge(index + 1), first + 1)};
}

std::uint32_t meanOf(const base::Picture& picture, Span columns, Span rows) {
    std::array<std::uint64_t, 4> sums{};
    for (int y = rows.first; y < rows.last; ++y) {
        const std::size_t row = static_cast<std::size_t>(y) * static_cast<std::size_t>(picture.width);
        for (int x = columns.first; x < columns.last; ++x) {
            const std::uint32_t pixel = picture.pixels[row + static_cast<std::size_t>(x)];
            for (std::size_t channel = 0; channel < sums.size(); ++channel) {
                sums[channel] += (pixel >> (8 * channel)) & 0xFFU;
            }
        }
    }
    const auto count =
        static_cast<std::uint64_t>(columns.last - columns.first) * static_cast<std::uint64_t>(rows.last - rows.first);
    std::uint32_t mean = 0;
    for (std::size_t channel = 0; channel < sums.size(); ++channel) {
        mean |= static_cast<std::uint32_t>((sums[channel] + count / 2) / count) << (8 * channel);
    }
    return mean;
}

} // namespace

base::Picture shrinkToFit(const base::Picture& picture, int maxWidth, int maxHeight) {
    if (maxWidth < 1 || maxHeight < 1 || picture.width < 1 || picture.height < 1) {
        return {};
    }
    if (picture.width <= maxWidth && picture.height <= maxHeight) {
        return picture;
    }
    const std::int64_t width = picture.width;
    const std::int64_t height = picture.height;
    const bool wide = width * maxHeight >= height * maxWidth;
    base::Picture shrunk;
    shrunk.width = wide ? maxWidth : static_cast<int>(std::max<std::int64_t>(1, width * maxHeight / height));
    shrunk.height = wide ? static_cast<int>(std::max<std::int64_t>(1, height * maxWidth / width)) : maxHeight;
    shrunk.pixels.reserve(static_cast<std::size_t>(shrunk.width) * static_cast<std::size_t>(shrunk.height));
    for (int y = 0; y < shrunk.height; ++y) {
        const Span rows = spanOf(y, shrunk.height, picture.height);
        for (int x = 0; x < shrunk.width; ++x) {
            shrunk.pixels.push_back(meanOf(picture, spanOf(x, shrunk.width, picture.width), rows));
        }
    }
    return shrunk;
}

base::Picture blendOnto(base::Picture picture, std::uint32_t background) {
    for (std::uint32_t& pixel : picture.pixels) {
        const std::uint32_t through = 255 - (pixel >> 24);
        std::uint32_t blended = 0xFF000000U;
        for (unsigned shift = 0; shift < 24; shift += 8) {
            const std::uint32_t behind = ((background >> shift) & 0xFFU) * through / 255;
            blended |= std::min(((pixel >> shift) & 0xFFU) + behind, 255U) << shift;
        }
        pixel = blended;
    }
    return picture;
}

} // namespace ui
