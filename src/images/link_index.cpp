#include "images/link_index.h"

#include <algorithm>
#include <bit>
#include <optional>
#include <string>

namespace images {
namespace {

constexpr std::size_t kLeastBuckets = 64;

std::uint64_t mix(std::uint64_t hash, std::string_view text) noexcept {
    for (const char c : text) { // FNV-1a
        hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001B3ULL;
    }
    return hash;
}

} // namespace

LinkIndex::Hash LinkIndex::hashOf(const Key& key) noexcept {
    std::uint64_t hash = mix(0xCBF29CE484222325ULL, key.code);
    if (key.chain == Chain::CodeAndFile) {
        hash = mix((hash ^ 0xFFU) * 0x100000001B3ULL, key.file); // 0xFF: no byte of UTF-8, so it parts the two
    }
    return static_cast<Hash>(hash ^ (hash >> 32U));
}

bool LinkIndex::matches(xml::ElementView link, const Key& key) {
    std::string scratch;
    return link.attribute("f1", scratch) == key.code &&
           (key.chain == Chain::Code || link.attribute("f2", scratch) == key.file);
}

void LinkIndex::build(xml::ElementView root) {
    clear();
    try {
        std::size_t links = 0;
        for (xml::ElementView element = root; element; element = element.nextInside(root)) {
            links += element.isNamed("p") ? 1U : 0U;
        }
        m_entries.reserve(links);
        const std::size_t buckets = std::bit_ceil(std::max(links, kLeastBuckets));
        for (std::vector<Slot>& heads : m_heads) {
            heads.assign(buckets, kNone);
        }
        for (xml::ElementView element = root; element; element = element.nextInside(root)) {
            if (element.isNamed("p")) {
                enter(element);
            }
        }
        chainAll();
        m_isBuilt = true;
    } catch (...) {
        clear();
        throw;
    }
}

void LinkIndex::clear() noexcept {
    *this = LinkIndex();
}

void LinkIndex::add(xml::ElementView link) {
    if (m_entries.size() == m_heads[0].size()) {
        enlarge();
    }
    if (enter(link)) {
        const auto slot = static_cast<Slot>(m_entries.size() - 1);
        for (std::size_t chain = 0; chain < kChains; ++chain) {
            if (m_entries[slot].places[chain].previous != kNone) {
                chainUp(slot, chain);
            }
        }
    }
}

void LinkIndex::removeWithin(xml::ElementView element) {
    for (xml::ElementView inner = element; inner; inner = inner.nextInside(element)) {
        if (inner.isNamed("p")) {
            drop(inner);
        }
    }
}

std::size_t LinkIndex::memory() const noexcept {
    return m_entries.capacity() * sizeof(Entry) + kChains * m_heads[0].capacity() * sizeof(Slot);
}

LinkIndex::Slot& LinkIndex::headOf(std::size_t chain, Hash hash) noexcept {
    return m_heads[chain][hash & (m_heads[chain].size() - 1)];
}

LinkIndex::Slot LinkIndex::first(const Key& key) const {
    const auto& heads = m_heads[static_cast<std::size_t>(key.chain)];
    const Hash hash = hashOf(key);
    return heads.empty() ? kNone : firstMatchFrom(heads[hash & (heads.size() - 1)], key, hash);
}

LinkIndex::Slot LinkIndex::nextMatch(Slot slot, const Key& key) const {
    const Place& place = m_entries[slot].places[static_cast<std::size_t>(key.chain)];
    return firstMatchFrom(place.next, key, place.hash);
}

LinkIndex::Slot LinkIndex::firstMatchFrom(Slot slot, const Key& key, Hash hash) const {
    while (slot != kNone) {
        const Entry& entry = m_entries[slot];
        const Place& place = entry.places[static_cast<std::size_t>(key.chain)];
        if (place.hash == hash && matches(entry.link, key)) {
            return slot;
        }
        slot = place.next;
    }
    return kNone;
}

// Notes a link and the chains that it belongs to; false when none. Links without f1 are never asked for, those without
// f2 only by their code: an absent attribute equals no text at all.
bool LinkIndex::enter(xml::ElementView link) {
    std::string codeScratch;
    std::string fileScratch;
    const std::optional<std::string_view> code = link.attribute("f1", codeScratch);
    if (!code) {
        return false;
    }
    const auto slot = static_cast<Slot>(m_entries.size());
    Entry& entry = m_entries.emplace_back();
    entry.link = link;
    entry.places[0] = {hashOf({Chain::Code, *code, {}}), slot, kNone};
    if (const std::optional<std::string_view> file = link.attribute("f2", fileScratch)) {
        entry.places[1] = {hashOf({Chain::CodeAndFile, *code, *file}), slot, kNone};
    }
    return true;
}

// The buckets lie scattered: asking for them some links ahead hides most of the wait for memory.
void LinkIndex::chainAll() noexcept {
    constexpr std::size_t kAhead = 16;
    for (std::size_t chain = 0; chain < kChains; ++chain) {
        for (Slot slot = 0; slot < m_entries.size(); ++slot) {
            if (slot + 2 * kAhead < m_entries.size()) {
                __builtin_prefetch(&headOf(chain, m_entries[slot + 2 * kAhead].places[chain].hash));
                const Slot head = headOf(chain, m_entries[slot + kAhead].places[chain].hash);
                if (head != kNone) {
                    __builtin_prefetch(&m_entries[head]);
                }
            }
            if (m_entries[slot].places[chain].previous != kNone) {
                chainUp(slot, chain);
            }
        }
    }
}

// Makes room: forgets removed links and doubles the buckets when that is not enough.
void LinkIndex::enlarge() {
    const auto isRemoved = [](const Entry& entry) { return !entry.link; };
    const auto removed = static_cast<std::size_t>(std::count_if(m_entries.begin(), m_entries.end(), isRemoved));
    const std::size_t live = m_entries.size() - removed;
    const std::size_t buckets = std::bit_ceil(std::max(live + live / 2, kLeastBuckets));
    m_entries.reserve(buckets);
    std::array<std::vector<Slot>, kChains> heads{std::vector<Slot>(buckets, kNone), std::vector<Slot>(buckets, kNone)};
    m_heads.swap(heads); // from here on nothing can fail
    std::erase_if(m_entries, isRemoved);
    chainAll();
}

void LinkIndex::chainUp(Slot slot, std::size_t chain) noexcept {
    Place& place = m_entries[slot].places[chain];
    Slot& head = headOf(chain, place.hash);
    place.next = kNone;
    if (head == kNone) {
        head = slot;
        place.previous = slot;
        return;
    }
    Slot& last = m_entries[head].places[chain].previous;
    place.previous = last;
    m_entries[last].places[chain].next = slot;
    last = slot;
}

void LinkIndex::unchain(Slot slot, std::size_t chain) noexcept {
    Place& place = m_entries[slot].places[chain];
    if (place.previous == kNone) {
        return;
    }
    Slot& head = headOf(chain, place.hash);
    if (place.next != kNone) {
        m_entries[place.next].places[chain].previous = place.previous;
    } else {
        m_entries[head].places[chain].previous = place.previous;
    }
    if (head == slot) {
        head = place.next;
    } else {
        m_entries[place.previous].places[chain].next = place.next;
    }
    place.previous = kNone;
}

std::optional<std::size_t> LinkIndex::number(xml::ElementView link) const {
    const Slot slot = slotOf(link);
    return slot == kNone ? std::nullopt : std::optional<std::size_t>(slot);
}

LinkIndex::Slot LinkIndex::slotOf(xml::ElementView link) const {
    std::string codeScratch;
    std::string fileScratch;
    const std::optional<std::string_view> code = link.attribute("f1", codeScratch);
    if (!code) {
        return kNone;
    }
    const std::optional<std::string_view> file = link.attribute("f2", fileScratch);
    const Key key = file ? Key{Chain::CodeAndFile, *code, *file} : Key{Chain::Code, *code, {}};
    Slot slot = first(key);
    while (slot != kNone && !(m_entries[slot].link == link)) {
        slot = nextMatch(slot, key);
    }
    return slot;
}

void LinkIndex::drop(xml::ElementView link) {
    if (const Slot slot = slotOf(link); slot != kNone) {
        unchain(slot, 0);
        unchain(slot, 1);
        m_entries[slot].link = {};
    }
}

} // namespace images
