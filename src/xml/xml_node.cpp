#include "xml/xml_node.h"

#include "base/runtime_error.h"
#include "xml/library.h"
#include "xml/node_text.h"
#include "xml/serializer.h"
#include "xml/tree.h"
#include "xml/xpath.h"

#include <utility>

namespace xml {
namespace {

std::string qualifiedName(const xmlChar* name, const xmlNs* ns) {
    const char* local = reinterpret_cast<const char*>(name);
    if (ns == nullptr || ns->prefix == nullptr) {
        return local;
    }
    return std::string(reinterpret_cast<const char*>(ns->prefix)) + ":" + local;
}

bool isElement(const xmlNode* node) noexcept {
    return node != nullptr && node->type == XML_ELEMENT_NODE;
}

const xmlAttr* findAttribute(const xmlNode* node, std::string_view name) {
    if (!isElement(node)) {
        return nullptr;
    }
    const xmlAttr* attribute = node->properties;
    while (attribute != nullptr && qualifiedName(attribute->name, attribute->ns) != name) {
        attribute = attribute->next;
    }
    return attribute;
}

std::string valueOf(const xmlAttr* attribute) {
    std::string value;
    appendParts(attribute->children, value);
    return value;
}

[[noreturn]] void raiseInvalidCall() {
    throw base::RuntimeError(base::error::kInvalidProcedureCall);
}

void requireNode(const xmlNode* node) {
    if (node == nullptr) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
}

bool canBeChild(const xmlNode* child) noexcept {
    switch (child->type) {
    case XML_ELEMENT_NODE:
    case XML_TEXT_NODE:
    case XML_CDATA_SECTION_NODE:
    case XML_ENTITY_REF_NODE:
    case XML_PI_NODE:
    case XML_COMMENT_NODE: return true;
    default: return false;
    }
}

bool canBeChildOfDocument(const xmlNode* document, const xmlNode* child) noexcept {
    if (child->type == XML_PI_NODE || child->type == XML_COMMENT_NODE) {
        return true;
    }
    const xmlNode* const root = xmlDocGetRootElement(document->doc);
    return child->type == XML_ELEMENT_NODE && (root == nullptr || root == child);
}

bool holds(const xmlNode* outer, const xmlNode* inner) noexcept {
    while (inner != nullptr && inner != outer) {
        inner = inner->parent;
    }
    return inner == outer;
}

xmlNode* copyInto(const Tree& tree, xmlNode* node) {
    const MemoryWatch memory;
    const DocTypeHidden hidden(tree.document());
    xmlNode* const copy = xmlDocCopyNode(node, tree.document(), 1);
    try {
        memory.check();
    } catch (...) {
        xmlFreeNode(copy);
        throw;
    }
    return copy;
}

} // namespace

XmlNode::XmlNode(std::shared_ptr<Tree> tree, _xmlNode* node) noexcept
    : m_tree(node != nullptr ? std::move(tree) : nullptr), m_node(node) {}

XmlNode XmlNode::handle(_xmlNode* node) const {
    return {m_tree, node};
}

NodeType XmlNode::type() const noexcept {
    if (m_node == nullptr) {
        return NodeType::None;
    }
    switch (m_node->type) {
    case XML_ELEMENT_NODE: return NodeType::Element;
    case XML_ATTRIBUTE_NODE: return NodeType::Attribute;
    case XML_TEXT_NODE: return NodeType::Text;
    case XML_CDATA_SECTION_NODE: return NodeType::CData;
    case XML_ENTITY_REF_NODE: return NodeType::EntityReference;
    case XML_PI_NODE: return NodeType::ProcessingInstruction;
    case XML_COMMENT_NODE: return NodeType::Comment;
    case XML_DOCUMENT_NODE: return NodeType::Document;
    case XML_DTD_NODE: return NodeType::DocumentType;
    default: return NodeType::None;
    }
}

std::string XmlNode::nodeName() const {
    switch (type()) {
    case NodeType::None: return {};
    case NodeType::Text: return "#text";
    case NodeType::CData: return "#cdata-section";
    case NodeType::Comment: return "#comment";
    case NodeType::Document: return "#document";
    case NodeType::Element:
    case NodeType::Attribute:
        return qualifiedName(
            m_node->name, m_node->type == XML_ELEMENT_NODE ? m_node->ns : reinterpret_cast<const xmlAttr*>(m_node)->ns);
    default: return m_node->name != nullptr ? reinterpret_cast<const char*>(m_node->name) : std::string();
    }
}

std::string XmlNode::text() const {
    std::string text;
    if (m_node != nullptr) {
        appendText(m_node, text);
    }
    return text;
}

void XmlNode::setText(std::string_view text) {
    requireNode(m_node);
    if (!isElement(m_node) || !isXmlText(text)) {
        raiseInvalidCall();
    }
    const std::string terminated(text);
    const MemoryWatch memory;
    xmlNode* const node =
        m_tree->keepNew(xmlNewDocText(m_node->doc, reinterpret_cast<const xmlChar*>(terminated.c_str())));
    memory.check();
    while (m_node->children != nullptr) {
        m_tree->detach(m_node->children);
    }
    if (!text.empty()) {
        m_tree->append(m_node, node);
    }
}

std::string XmlNode::xml() const {
    return m_node != nullptr ? serialize(m_node) : std::string();
}

XmlNode XmlNode::parentNode() const {
    return handle(m_node != nullptr && m_node->type != XML_ATTRIBUTE_NODE ? m_node->parent : nullptr);
}

XmlNode XmlNode::firstChild() const {
    return handle(m_node != nullptr ? firstChildOf(m_node) : nullptr);
}

XmlNode XmlNode::lastChild() const {
    return handle(m_node != nullptr && firstChildOf(m_node) != nullptr ? m_node->last : nullptr);
}

XmlNode XmlNode::nextSibling() const {
    return handle(m_node != nullptr && m_node->type != XML_ATTRIBUTE_NODE ? m_node->next : nullptr);
}

XmlNode XmlNode::previousSibling() const {
    return handle(m_node != nullptr && m_node->type != XML_ATTRIBUTE_NODE ? m_node->prev : nullptr);
}

XmlNodeList XmlNode::childNodes() const {
    std::vector<xmlNode*> nodes;
    for (xmlNode* child = m_node != nullptr ? firstChildOf(m_node) : nullptr; child != nullptr; child = child->next) {
        nodes.push_back(child);
    }
    return {m_tree, std::move(nodes)};
}

std::vector<Attribute> XmlNode::attributes() const {
    std::vector<Attribute> all;
    if (isElement(m_node)) {
        for (const xmlAttr* attribute = m_node->properties; attribute != nullptr; attribute = attribute->next) {
            all.push_back({qualifiedName(attribute->name, attribute->ns), valueOf(attribute)});
        }
    }
    return all;
}

std::string XmlNode::getAttribute(std::string_view name) const {
    const xmlAttr* const attribute = findAttribute(m_node, name);
    return attribute != nullptr ? valueOf(attribute) : std::string();
}

bool XmlNode::hasAttribute(std::string_view name) const {
    return findAttribute(m_node, name) != nullptr;
}

void XmlNode::setAttribute(std::string_view name, std::string_view value) {
    requireNode(m_node);
    if (!isElement(m_node) || !isXmlName(name) || !isXmlText(value)) {
        raiseInvalidCall();
    }
    const std::string key(name);
    const std::string text(value);
    const MemoryWatch memory;
    if (xmlSetProp(m_node, reinterpret_cast<const xmlChar*>(key.c_str()),
                   reinterpret_cast<const xmlChar*>(text.c_str())) == nullptr) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    memory.check();
}

void XmlNode::removeAttribute(std::string_view name) {
    requireNode(m_node);
    if (!isElement(m_node)) {
        raiseInvalidCall();
    }
    const std::string key(name);
    xmlUnsetProp(m_node, reinterpret_cast<const xmlChar*>(key.c_str()));
}

XmlNode XmlNode::selectSingleNode(std::string_view expression) const {
    return selectNodes(expression)[0];
}

XmlNodeList XmlNode::selectNodes(std::string_view expression) const {
    if (m_node == nullptr) {
        return {};
    }
    return {m_tree, evaluate(expression, m_node)};
}

XmlNode XmlNode::appendChild(const XmlNode& child) {
    requireNode(m_node);
    xmlNode* node = child.m_node;
    const bool isDocument = m_node->type == XML_DOCUMENT_NODE;
    if (node == nullptr || !(isDocument || isElement(m_node)) || !canBeChild(node) ||
        (isDocument && !canBeChildOfDocument(m_node, node)) || holds(node, m_node)) {
        raiseInvalidCall();
    }
    if (child.m_tree != m_tree) {
        node = copyInto(*m_tree, node);
    }
    m_tree->append(m_node, node);
    return handle(node);
}

XmlNode XmlNode::removeChild(const XmlNode& child) {
    if (!child) {
        return {};
    }
    requireNode(m_node);
    if (child.m_node->type == XML_ATTRIBUTE_NODE || child.m_node->parent != m_node) {
        raiseInvalidCall();
    }
    m_tree->detach(child.m_node);
    return child;
}

XmlNode XmlNodeList::operator[](std::size_t index) const {
    return index < m_nodes.size() ? XmlNode(m_tree, m_nodes[index]) : XmlNode();
}

} // namespace xml
