// A picture decoder that knows the pictures a test gave it; every other file is missing or broken to it.
#pragma once

#include "ports/picture_decoder.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fakes {

class FakePictureDecoder final : public ports::PictureDecoder {
public:
    // A picture of one colour (0xAARRGGBB, colours multiplied by alpha). Paths are case-insensitive.
    void add(std::string_view path, int width, int height, std::uint32_t colour = 0xFF336699U);

    std::optional<base::Picture> decode(std::string_view path, int maxWidth, int maxHeight) override;

    // The paths that were asked for, oldest first.
    [[nodiscard]] const std::vector<std::string>& requests() const { return m_requests; }

private:
    struct Source {
        int width;
        int height;
        std::uint32_t colour;
    };
    std::map<std::string, Source> m_pictures; // by upper-cased path
    std::vector<std::string> m_requests;
};

} // namespace fakes
