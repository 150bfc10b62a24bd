// LinkDocument's clean-up. The plain way reaches each child by its number and searches the whole document for each,
// which takes hours for a large one; this walks siblings, asks the index, and removes the same nodes.
#include "base/text.h"
#include "images/link_document.h"

#include <string>
#include <unordered_set>
#include <vector>

namespace images {
namespace {

// The first two of a group of equal links stay.
constexpr std::size_t kKept = 2;

bool isNamedAfterCode(const std::string& code, const std::string& file) {
    return base::upperCase(file) == base::upperCase(code + ".JPG");
}

} // namespace

// After a removal at or before the place of `current`, the list closes up and the next place holds a later child: as
// many children are passed over as were removed there.
void LinkDocument::cleanUp(const std::function<bool()>& proceed) {
    const xml::XmlNode root = m_document.documentElement();
    std::unordered_set<const void*> passed;
    for (xml::XmlNode current = root.firstChild(); current && proceed();) {
        passed.insert(current.identity());
        xml::XmlNode next = current.nextSibling();
        std::size_t closedUp = 0;
        if (current.type() == xml::NodeType::Element) {
            const std::string code = current.getAttribute("f1");
            const std::string file = current.getAttribute("f2");
            if (isNamedAfterCode(code, file)) {
                detach(current);
                ++closedUp;
            }
            const std::vector<xml::XmlNode> equal = equalLinks(code, file);
            for (std::size_t i = kKept; i < equal.size(); ++i) {
                const xml::XmlNode& link = equal[i];
                if (link.parentNode() != root) {
                    continue; // only children of the root can be removed from it
                }
                if (link == next) {
                    next = next.nextSibling();
                }
                closedUp += passed.contains(link.identity()) ? 1U : 0U;
                detach(link);
            }
        }
        for (; closedUp > 0 && next; --closedUp) {
            passed.insert(next.identity());
            next = next.nextSibling();
        }
        current = next;
    }
}

} // namespace images
