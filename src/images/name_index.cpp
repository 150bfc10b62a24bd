#include "images/name_index.h"

#include <algorithm>
#include <bit>
#include <numeric>
#include <utility>

namespace images {
namespace {

// The sequence's bytes as one number, spread so that its upper bits serve as a bucket.
std::uint32_t hashAt(const char* bytes, std::size_t length) noexcept {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < length; ++i) {
        value = (value << 8U) | static_cast<unsigned char>(bytes[i]);
    }
    value *= 0x9E3779B1U;
    return value ^ (value >> 15U);
}

// Calls visit(bucket, position of the name) for each sequence of each name, names in order.
template <typename Visit>
void forEachSequence(const std::vector<std::string>& names, std::size_t length, std::uint32_t mask, Visit&& visit) {
    for (std::uint32_t n = 0; n < names.size(); ++n) {
        const std::string& name = names[n];
        for (std::size_t i = 0; i + length <= name.size(); ++i) {
            visit(hashAt(name.data() + i, length) & mask, n);
        }
    }
}

} // namespace

NameIndex::NameIndex(std::vector<std::string> names) : m_names(std::move(names)) {}

NameIndex::Level NameIndex::build(std::size_t length) const {
    Level built;
    const auto wanted = std::clamp<std::size_t>(m_names.size() * 2, 256, std::size_t{1} << 18U);
    built.mask = static_cast<std::uint32_t>(std::bit_ceil(wanted) - 1);
    built.firstEntry.assign(std::size_t{built.mask} + 2, 0);
    forEachSequence(m_names, length, built.mask,
                    [&](std::uint32_t bucket, std::uint32_t) { ++built.firstEntry[bucket + 1]; });
    std::partial_sum(built.firstEntry.begin(), built.firstEntry.end(), built.firstEntry.begin());
    built.entries.resize(built.firstEntry.back());
    std::vector<std::uint32_t> next(built.firstEntry.begin(), built.firstEntry.end() - 1);
    forEachSequence(m_names, length, built.mask,
                    [&](std::uint32_t bucket, std::uint32_t name) { built.entries[next[bucket]++] = name; });
    return built;
}

const NameIndex::Level& NameIndex::level(std::size_t length) const {
    std::optional<Level>& wanted = m_levels[length - 1];
    if (!wanted) {
        wanted = build(length);
    }
    return *wanted;
}

void NameIndex::find(std::string_view code, std::vector<std::uint32_t>& found) const {
    found.clear();
    if (code.empty()) {
        found.resize(m_names.size());
        std::iota(found.begin(), found.end(), 0U);
        return;
    }
    const std::size_t length = std::min(code.size(), kLongest);
    const Level& index = level(length);
    std::uint32_t first = 0;
    std::uint32_t last = UINT32_MAX;
    for (std::size_t i = 0; i + length <= code.size(); ++i) {
        const std::uint32_t bucket = hashAt(code.data() + i, length) & index.mask;
        const std::uint32_t from = index.firstEntry[bucket];
        const std::uint32_t to = index.firstEntry[bucket + 1];
        if (to - from < last - first) {
            first = from;
            last = to;
        }
    }
    for (std::uint32_t e = first; e < last; ++e) {
        const std::uint32_t name = index.entries[e];
        const bool again = e > first && index.entries[e - 1] == name; // a sequence that the name holds twice
        if (!again && m_names[name].find(code) != std::string::npos) {
            found.push_back(name);
        }
    }
}

} // namespace images
