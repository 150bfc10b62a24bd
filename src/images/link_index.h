// Finds links by product code, and by product code and file, without scanning the document.
#pragma once

#include "xml/element_view.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

namespace images {

// A hash index over the elements named `p` (at any depth, the root included) that have f1, or f1 and f2. It borrows the
// document's nodes: whoever changes the document tells it, or clears it. About 40 bytes a link.
//
// Matches come in document order because links are entered in document order: at the build, and afterwards only as the
// root's last child.
class LinkIndex {
public:
    // Enters every link of the document; `root` is its root or nothing. Raises std::bad_alloc, the index is empty then.
    void build(xml::ElementView root);
    void clear() noexcept;
    [[nodiscard]] bool isBuilt() const noexcept { return m_isBuilt; }

    // `link` has become the root's last child, with its attributes. Raises std::bad_alloc; clear the index then.
    void add(xml::ElementView link);
    // `element` with all below it is about to leave the document.
    void removeWithin(xml::ElementView element);

    // Calls visit(link) for each link of the code, or of the code and file, in document order until it returns false.
    // The visitor must not change the index.
    template <typename Visit>
    void forEach(std::string_view code, Visit&& visit) const {
        const Key key{Chain::Code, code, {}};
        for (Slot slot = first(key); slot != kNone && visit(m_entries[slot].link); slot = nextMatch(slot, key)) {
        }
    }
    template <typename Visit>
    void forEach(std::string_view code, std::string_view file, Visit&& visit) const {
        const Key key{Chain::CodeAndFile, code, file};
        for (Slot slot = first(key); slot != kNone && visit(m_entries[slot].link); slot = nextMatch(slot, key)) {
        }
    }

    // The link's number in document order among those entered, or none. Numbers stay as they are until the next add().
    [[nodiscard]] std::optional<std::size_t> number(xml::ElementView link) const;

    [[nodiscard]] std::size_t memory() const noexcept; // bytes

private:
    using Slot = std::uint32_t;
    using Hash = std::uint32_t;
    enum class Chain : std::uint8_t { Code, CodeAndFile };
    static constexpr std::size_t kChains = 2;
    static constexpr Slot kNone = UINT32_MAX;

    struct Key {
        Chain chain;
        std::string_view code;
        std::string_view file;
    };

    // A link's place in one chain of its bucket. The first of a chain has the last as its previous one, so that
    // appending and leaving cost nothing; a link that does not belong to the chain has kNone there.
    struct Place {
        Hash hash = 0;
        Slot previous = kNone;
        Slot next = kNone;
    };
    struct Entry {
        xml::ElementView link; // none: removed
        std::array<Place, kChains> places;
    };

    [[nodiscard]] static Hash hashOf(const Key& key) noexcept;
    [[nodiscard]] static bool matches(xml::ElementView link, const Key& key);
    [[nodiscard]] Slot first(const Key& key) const;
    [[nodiscard]] Slot nextMatch(Slot slot, const Key& key) const;
    [[nodiscard]] Slot slotOf(xml::ElementView link) const;
    [[nodiscard]] Slot firstMatchFrom(Slot slot, const Key& key, Hash hash) const;
    [[nodiscard]] Slot& headOf(std::size_t chain, Hash hash) noexcept;

    bool enter(xml::ElementView link);
    void chainAll() noexcept;
    void enlarge();
    void chainUp(Slot slot, std::size_t chain) noexcept;
    void unchain(Slot slot, std::size_t chain) noexcept;
    void drop(xml::ElementView link);

    bool m_isBuilt = false;
    std::vector<Entry> m_entries;                   // in document order
    std::array<std::vector<Slot>, kChains> m_heads; // a power of two of buckets, at least as many as entries
};

} // namespace images
