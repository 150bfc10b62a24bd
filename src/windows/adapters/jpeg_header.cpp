#include "windows/adapters/jpeg_header.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

namespace windows {
namespace {

constexpr int kUpright = 1;
constexpr std::uint32_t kOrientationTag = 0x0112;

// Reads numbers of either byte order; past the end everything is zero, so a cut-off header states nothing.
class Numbers {
public:
    Numbers(std::string_view bytes, bool littleEndian) noexcept : m_bytes(bytes), m_littleEndian(littleEndian) {}

    [[nodiscard]] std::uint32_t at(std::size_t offset, std::size_t size) const noexcept {
        if (offset > m_bytes.size() || size > m_bytes.size() - offset) {
            return 0;
        }
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < size; ++i) {
            const std::size_t place = m_littleEndian ? size - 1 - i : i;
            value = (value << 8U) | static_cast<unsigned char>(m_bytes[offset + place]);
        }
        return value;
    }

private:
    std::string_view m_bytes;
    bool m_littleEndian;
};

// The orientation entry of the first directory in a TIFF block.
int orientationInTiff(std::string_view tiff) noexcept {
    const Numbers numbers(tiff, tiff.starts_with("II"));
    const std::size_t directory = numbers.at(4, 4);
    const std::uint32_t entries = numbers.at(directory, 2);
    for (std::size_t i = 0; i < entries; ++i) {
        const std::size_t entry = directory + 2 + i * 12;
        if (numbers.at(entry, 2) == kOrientationTag) {
            const std::uint32_t value = numbers.at(entry + 8, 2);
            return value >= 1 && value <= 8 ? static_cast<int>(value) : kUpright;
        }
    }
    return kUpright;
}

// Of the start-of-frame markers 0xFFC0 to 0xFFCF three mean something else.
bool startsFrame(std::uint32_t marker) noexcept {
    return (marker & 0xFFF0U) == 0xFFC0 && marker != 0xFFC4 && marker != 0xFFC8 && marker != 0xFFCC;
}

} // namespace

int exifOrientation(std::string_view jpegStart) noexcept {
    constexpr std::string_view kExif("Exif\0\0", 6);
    const Numbers numbers(jpegStart, false);
    if (numbers.at(0, 2) != 0xFFD8) {
        return kUpright;
    }
    for (std::size_t segment = 2; (numbers.at(segment, 2) & 0xFFF0U) == 0xFFE0;) { // application segments come first
        const std::uint32_t length = numbers.at(segment + 2, 2);
        const std::string_view content =
            jpegStart.substr(segment + 4 <= jpegStart.size() ? segment + 4 : jpegStart.size());
        if (numbers.at(segment, 2) == 0xFFE1 && content.starts_with(kExif)) {
            return orientationInTiff(content.substr(kExif.size()));
        }
        segment += 2 + (length < 2 ? 2 : length);
    }
    return kUpright;
}

std::uint64_t jpegPixelCount(std::string_view jpegStart) noexcept {
    const Numbers numbers(jpegStart, false);
    if (numbers.at(0, 2) != 0xFFD8) {
        return 0;
    }
    std::size_t segment = 2;
    while (numbers.at(segment, 1) == 0xFF && !startsFrame(numbers.at(segment, 2))) {
        segment += 2 + std::max(numbers.at(segment + 2, 2), 2U);
    }
    return startsFrame(numbers.at(segment, 2)) ? std::uint64_t{numbers.at(segment + 5, 2)} * numbers.at(segment + 7, 2)
                                               : 0;
}

} // namespace windows
