// What accounts have sent, in the data folder: images-PROFILE.xml, the links as the supplier has them (without marks),
// and productgroups-PROFILE.xml.
#pragma once

#include "data_folder.h"
#include "xml/xml_node.h"

#include <cstddef>
#include <string_view>

namespace supplier {

struct LinkCounts {
    std::size_t created = 0;
    std::size_t deleted = 0;
    std::size_t stored = 0; // how many there are now
};

class Uploads {
public:
    explicit Uploads(const DataFolder& folder) : m_folder(folder) {}

    // Applies the marks of the sent links (f3: "created", "deleted") to the stored ones. A link is its f1 and f2.
    LinkCounts mergeLinks(std::string_view profile, const xml::XmlNode& images) const;

    // Puts the sent links in place of all stored ones; those marked "deleted" are left out.
    LinkCounts replaceLinks(std::string_view profile, const xml::XmlNode& images) const;

    // Keeps the product groups as they were sent; returns how many groups there are.
    std::size_t storeProductGroups(std::string_view profile, const xml::XmlNode& productGroups) const;

private:
    const DataFolder& m_folder;
};

} // namespace supplier
