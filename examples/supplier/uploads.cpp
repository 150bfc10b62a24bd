#include "uploads.h"

#include "xml/xml_document.h"

#include <map>
#include <string>
#include <utility>

namespace supplier {
namespace {

using LinkKey = std::pair<std::string, std::string>;

std::string linksFile(std::string_view profile) {
    return "images-" + std::string(profile) + ".xml";
}

// The links of one account, found by product code and file name.
class StoredLinks {
public:
    explicit StoredLinks(const std::string& bytes) {
        if (!m_document.load(bytes)) {
            m_document.node().appendChild(m_document.createElement("images"));
        }
        for (const xml::XmlNode& link : m_document.selectNodes("/images/p")) {
            m_links.emplace(keyOf(link), link);
        }
    }

    void apply(const xml::XmlNode& sent, LinkCounts& counts) {
        const auto found = m_links.find(keyOf(sent));
        if (sent.getAttribute("f3") == "deleted") {
            if (found != m_links.end()) {
                m_document.documentElement().removeChild(found->second);
                m_links.erase(found);
                ++counts.deleted;
            }
        } else if (found == m_links.end()) {
            xml::XmlNode link = m_document.documentElement().appendChild(sent);
            link.removeAttribute("f3");
            m_links.emplace(keyOf(link), link);
            ++counts.created;
        }
        counts.stored = m_links.size();
    }

    [[nodiscard]] std::string xml() const { return m_document.xml(); }

private:
    static LinkKey keyOf(const xml::XmlNode& link) { return {link.getAttribute("f1"), link.getAttribute("f2")}; }

    xml::XmlDocument m_document;
    std::map<LinkKey, xml::XmlNode> m_links;
};

LinkCounts store(const DataFolder& folder, std::string_view profile, StoredLinks links, const xml::XmlNode& images) {
    LinkCounts counts;
    for (const xml::XmlNode& link : images.selectNodes("p")) {
        links.apply(link, counts);
    }
    folder.replace(linksFile(profile), links.xml());
    return counts;
}

} // namespace

LinkCounts Uploads::mergeLinks(std::string_view profile, const xml::XmlNode& images) const {
    return store(m_folder, profile, StoredLinks(m_folder.read(linksFile(profile)).value_or("")), images);
}

LinkCounts Uploads::replaceLinks(std::string_view profile, const xml::XmlNode& images) const {
    return store(m_folder, profile, StoredLinks(""), images);
}

std::size_t Uploads::storeProductGroups(std::string_view profile, const xml::XmlNode& productGroups) const {
    m_folder.replace("productgroups-" + std::string(profile) + ".xml", productGroups.xml());
    return productGroups.selectNodes("*").size();
}

} // namespace supplier
