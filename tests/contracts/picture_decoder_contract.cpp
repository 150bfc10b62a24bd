#include "contracts/picture_decoder_contract.h"

#include <algorithm>

namespace contracts {

std::vector<GoodPicture> goodPictures() {
    return {{"quarters.jpg", 200, 100}, {"quarters.png", 200, 100}, {"palette.png", 40, 40}, {"grey.jpg", 30, 60}};
}

std::string pathOf(const std::string& name) {
    std::string path = QVI_TEST_DATA "/pictures/" + name;
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

namespace {

TEST_P(PictureDecoderContract, PicturesShrinkToFitAndNeverGrow) {
    for (const GoodPicture& good : goodPictures()) {
        const auto whole = decoder().decode(pathOf(good.name), 1000, 1000);
        ASSERT_TRUE(whole) << good.name;
        EXPECT_EQ(whole->width, good.width) << good.name;
        EXPECT_EQ(whole->height, good.height) << good.name;

        const auto small = decoder().decode(pathOf(good.name), 20, 20);
        ASSERT_TRUE(small) << good.name;
        EXPECT_EQ(small->width, good.width >= good.height ? 20 : 10) << good.name;
        EXPECT_EQ(small->height, good.height >= good.width ? 20 : 10) << good.name;
        EXPECT_EQ(small->pixels.size(), static_cast<std::size_t>(small->width * small->height)) << good.name;
    }
    const auto line = decoder().decode(pathOf("quarters.jpg"), 1, 1);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->pixels.size(), 1U);
}

TEST_P(PictureDecoderContract, WhatIsNoPictureIsEmptyAndNeverRaises) {
    for (const std::string name : {"missing.jpg", "no such folder\\a.jpg", "empty.jpg", "text.jpg", "header_only.jpg",
                                   "broken.png", "huge.jpg", "huge.png", ""}) {
        EXPECT_FALSE(decoder().decode(pathOf(name), 100, 100)) << name;
    }
    EXPECT_FALSE(decoder().decode("", 100, 100));
    EXPECT_FALSE(decoder().decode(pathOf("quarters.jpg"), 0, 100));
    EXPECT_FALSE(decoder().decode(pathOf("quarters.jpg"), 100, -1));
}

} // namespace
} // namespace contracts
