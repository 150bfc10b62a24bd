// The platform's image decoder (Windows Imaging Component), for previews.
#pragma once

#include "ports/picture_decoder.h"

namespace windows {

// The calling thread must have initialised COM. The component is loaded at the first picture, and nothing is kept
// between two calls: a decoded file is free again at once.
class WicPictureDecoder final : public ports::PictureDecoder {
public:
    std::optional<base::Picture> decode(std::string_view path, int maxWidth, int maxHeight) override;
};

} // namespace windows
