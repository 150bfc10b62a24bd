// What every picture decoder must do with the pictures of tests/data/pictures.
#pragma once

#include "ports/picture_decoder.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace contracts {

struct GoodPicture {
    std::string name;
    int width;
    int height;
};
[[nodiscard]] std::vector<GoodPicture> goodPictures();

// The full path of a file in tests/data/pictures.
[[nodiscard]] std::string pathOf(const std::string& name);

class PictureWorld {
public:
    PictureWorld() = default;
    PictureWorld(const PictureWorld&) = delete;
    PictureWorld& operator=(const PictureWorld&) = delete;
    virtual ~PictureWorld() = default;
    virtual ports::PictureDecoder& decoder() = 0;
};

class PictureDecoderContract : public testing::TestWithParam<std::function<std::unique_ptr<PictureWorld>()>> {
protected:
    PictureDecoderContract() : m_world(GetParam()()) {}
    ports::PictureDecoder& decoder() { return m_world->decoder(); }

private:
    std::unique_ptr<PictureWorld> m_world;
};

} // namespace contracts
