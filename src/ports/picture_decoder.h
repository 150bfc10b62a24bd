// The port to the platform's image decoder, used by the preview of a linked picture.
#pragma once

#include "base/picture.h"

#include <optional>
#include <string_view>

namespace ports {

class PictureDecoder {
public:
    PictureDecoder() = default;
    PictureDecoder(const PictureDecoder&) = delete;
    PictureDecoder& operator=(const PictureDecoder&) = delete;
    virtual ~PictureDecoder() = default;

    // Decodes a picture file and shrinks it to fit maxWidth x maxHeight pixels, keeping its proportions; a smaller
    // picture keeps its size. Empty when the file is missing, locked, no picture or broken: a preview never raises.
    [[nodiscard]] virtual std::optional<base::Picture> decode(std::string_view path, int maxWidth, int maxHeight) = 0;
};

} // namespace ports
