#include "fakes/fake_picture_decoder.h"

#include "base/text.h"

#include <algorithm>

namespace fakes {

void FakePictureDecoder::add(std::string_view path, int width, int height, std::uint32_t colour) {
    m_pictures[base::upperCase(path)] = {width, height, colour};
}

std::optional<base::Picture> FakePictureDecoder::decode(std::string_view path, int maxWidth, int maxHeight) {
    m_requests.emplace_back(path);
    const auto found = m_pictures.find(base::upperCase(path));
    if (found == m_pictures.end() || maxWidth <= 0 || maxHeight <= 0) {
        return std::nullopt;
    }
    const Source& source = found->second;
    const double scale = std::min({1.0, double(maxWidth) / source.width, double(maxHeight) / source.height});
    base::Picture picture;
    picture.width = std::max(1, static_cast<int>(source.width * scale + 0.5));
    picture.height = std::max(1, static_cast<int>(source.height * scale + 0.5));
    picture.pixels.assign(static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height),
                          source.colour);
    return picture;
}

} // namespace fakes
