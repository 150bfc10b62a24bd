// Shrinking and blending pictures for a preview.
#include "ui/picture_scaling.h"

#include <gtest/gtest.h>

namespace {

base::Picture plain(int width, int height, std::uint32_t colour) {
    return {width, height, std::vector<std::uint32_t>(static_cast<std::size_t>(width * height), colour)};
}

TEST(PictureScaling, KeepsProportionsFitsAndNeverEnlarges) {
    struct Row {
        int width, height, maxWidth, maxHeight, expectedWidth, expectedHeight;
    };
    constexpr Row kRows[] = {{640, 420, 200, 200, 200, 131}, {420, 640, 200, 200, 131, 200}, {30, 20, 200, 200, 30, 20},
                             {5000, 2, 100, 100, 100, 1},    {2, 5000, 100, 100, 1, 100},    {10, 10, 0, 5, 0, 0}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(testing::Message() << row.width << "x" << row.height << " into " << row.maxWidth << "x"
                                        << row.maxHeight);
        const base::Picture shrunk =
            ui::shrinkToFit(plain(row.width, row.height, 0xFF336699U), row.maxWidth, row.maxHeight);
        EXPECT_EQ(shrunk.width, row.expectedWidth);
        EXPECT_EQ(shrunk.height, row.expectedHeight);
        EXPECT_EQ(shrunk.pixels,
                  plain(row.expectedWidth, row.expectedHeight, 0xFF336699U).pixels); // a plain colour stays itself
    }
}

TEST(PictureScaling, EachPixelIsTheMeanOfThoseItStandsFor) {
    const base::Picture checks{
        4, 2, {0xFF000000U, 0xFFFFFFFFU, 0xFF0000FFU, 0xFF0000FFU, 0xFFFFFFFFU, 0xFF000000U, 0x00000000U, 0x00000000U}};
    const base::Picture shrunk = ui::shrinkToFit(checks, 2, 1);
    EXPECT_EQ(shrunk.pixels, (std::vector<std::uint32_t>{0xFF808080U, 0x80000080U}));
}

TEST(PictureScaling, WhatIsTransparentShowsTheBackground) {
    const base::Picture picture{3, 1, {0xFF102030U, 0x00000000U, 0x80400000U}};
    EXPECT_EQ(ui::blendOnto(picture, 0x00FF00FFU).pixels,
              (std::vector<std::uint32_t>{0xFF102030U, 0xFFFF00FFU, 0xFFBF007FU}));
}

} // namespace
