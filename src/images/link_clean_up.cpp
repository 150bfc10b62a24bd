// LinkDocument's clean-up. The plain way reaches each child by its number and searches the whole document for each,
// which takes hours for a large one; this walks siblings, asks the index, and removes the same nodes.
#include "base/text.h"
#include "images/link_document.h"

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace images {
namespace {

// The first two of a group of equal links stay.
constexpr std::size_t kKept = 2;

bool isNamedAfterCode(std::string_view code, std::string_view file) {
    constexpr std::string_view kEnding = ".JPG";
    return file.size() >= kEnding.size() &&
           base::equalInUpperCase(file.substr(file.size() - kEnding.size()), kEnding) &&
           base::equalInUpperCase(file.substr(0, file.size() - kEnding.size()), code);
}

} // namespace

// How far the walk over the root's children has come, in terms of the index's numbers.
class LinkDocument::Passed {
public:
    explicit Passed(const LinkIndex& index) : m_index(index) {}

    void pass(const xml::XmlNode& child) {
        if (child.type() == xml::NodeType::Element) {
            if (const auto number = m_index.number(xml::XmlDocument::toView(child))) {
                m_end = std::max(m_end, *number + 1);
            }
        }
    }
    // Whether the walk has passed that child of the root; `next` is the first that it has not.
    [[nodiscard]] bool contains(const xml::XmlNode& link, xml::XmlNode next) const {
        if (const auto number = m_index.number(xml::XmlDocument::toView(link))) {
            return *number < m_end;
        }
        // Without a code: only an expression with an apostrophe of its own finds such.
        while (next && !(next == link)) {
            next = next.nextSibling();
        }
        return !next;
    }

private:
    const LinkIndex& m_index;
    std::size_t m_end = 0;
};

// After a removal at or before the place of `current`, the list closes up and the next place holds a later child: as
// many children are passed over as were removed there.
void LinkDocument::cleanUp(const std::function<bool()>& proceed) {
    const xml::XmlNode root = m_document.documentElement();
    Passed passed(index());
    for (xml::XmlNode current = root.firstChild(); current && proceed();) {
        passed.pass(current);
        xml::XmlNode next = current.nextSibling();
        std::size_t closedUp = 0;
        if (current.type() == xml::NodeType::Element) {
            const std::string code = current.getAttribute("f1");
            const std::string file = current.getAttribute("f2");
            if (isNamedAfterCode(code, file)) {
                detach(current);
                ++closedUp;
            }
            for (const xml::XmlNode& link : equalLinks(code, file, kKept)) {
                if (link.parentNode() != root) {
                    continue; // only children of the root can be removed from it
                }
                closedUp += passed.contains(link, next) ? 1U : 0U;
                if (link == next) {
                    next = next.nextSibling();
                }
                detach(link);
            }
        }
        for (; closedUp > 0 && next; --closedUp) {
            passed.pass(next);
            next = next.nextSibling();
        }
        current = next;
    }
}

} // namespace images
