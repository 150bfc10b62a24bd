#include "xml/element_view.h"

#include "xml/node_text.h"
#include "xml/tree.h"

#include <cstring>

namespace xml {
namespace {

bool equals(const xmlChar* name, std::string_view wanted) noexcept {
    const char* text = reinterpret_cast<const char*>(name);
    return std::strncmp(text, wanted.data(), wanted.size()) == 0 && text[wanted.size()] == '\0';
}

} // namespace

bool ElementView::isNamed(std::string_view name) const noexcept {
    return m_node != nullptr && m_node->ns == nullptr && equals(m_node->name, name);
}

std::optional<std::string_view> ElementView::attribute(std::string_view name, std::string& scratch) const {
    if (m_node == nullptr) {
        return std::nullopt;
    }
    for (const xmlAttr* attribute = m_node->properties; attribute != nullptr; attribute = attribute->next) {
        if (attribute->ns != nullptr || !equals(attribute->name, name)) {
            continue;
        }
        const xmlNode* value = attribute->children;
        if (value == nullptr) {
            return std::string_view();
        }
        if (value->next == nullptr && value->type == XML_TEXT_NODE && value->content != nullptr) {
            return std::string_view(reinterpret_cast<const char*>(value->content));
        }
        scratch.clear();
        appendParts(value, scratch);
        return std::string_view(scratch);
    }
    return std::nullopt;
}

ElementView ElementView::parent() const noexcept {
    xmlNode* const parent = m_node != nullptr ? m_node->parent : nullptr;
    return ElementView(parent != nullptr && parent->type == XML_ELEMENT_NODE ? parent : nullptr);
}

ElementView ElementView::nextInside(ElementView top) const noexcept {
    xmlNode* node = m_node;
    do {
        node = xml::nextInside(node, top.m_node);
    } while (node != nullptr && node->type != XML_ELEMENT_NODE);
    return ElementView(node);
}

} // namespace xml
