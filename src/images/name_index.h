// Answers which names of a folder contain a product code, without looking at every name for every code.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace images {

// An inverted index of the names' byte sequences of length 1 to 4: for each, the names that hold it in listing order. A
// look-up takes the rarest four-byte sequence of the code and verifies those names only. Codes shorter than four bytes
// use a level of their own, built at their first look-up. Sequences share hash buckets, so a bucket may hold names too
// many, never too few.
class NameIndex {
public:
    // `names` as they are to be compared: upper-cased by the caller. Positions in answers count from 0 in this order.
    explicit NameIndex(std::vector<std::string> names);

    [[nodiscard]] const std::vector<std::string>& names() const noexcept { return m_names; }

    // Replaces `found` by the positions of all names that contain `code`, ascending; an empty code is in every name.
    void find(std::string_view code, std::vector<std::uint32_t>& found) const;

private:
    static constexpr std::size_t kLongest = 4;

    struct Level {
        std::uint32_t mask = 0;                // number of buckets - 1
        std::vector<std::uint32_t> firstEntry; // per bucket, where its names begin in `entries`; one more at the end
        std::vector<std::uint32_t> entries;
    };

    [[nodiscard]] Level build(std::size_t length) const;
    [[nodiscard]] const Level& level(std::size_t length) const;

    std::vector<std::string> m_names;
    mutable std::array<std::optional<Level>, kLongest> m_levels; // [length - 1]
};

} // namespace images
