#include "xml/tree.h"

#include "base/runtime_error.h"

namespace xml {
namespace {

std::size_t placeOf(const xmlNode* node) noexcept {
    return reinterpret_cast<std::size_t>(node->_private);
}

void setPlace(xmlNode* node, std::size_t place) noexcept {
    node->_private = reinterpret_cast<void*>(place); // NOLINT(performance-no-int-to-ptr): a number, never followed
}

} // namespace

// With a dictionary, as the parser gives its documents: names that recur are kept once.
Tree::Tree() : m_document(xmlNewDoc(reinterpret_cast<const xmlChar*>("1.0"))) {
    if (m_document == nullptr || (m_document->dict = xmlDictCreate()) == nullptr) {
        xmlFreeDoc(m_document);
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
}

Tree::~Tree() {
    for (xmlNode* node : m_detached) {
        xmlFreeNode(node);
    }
    xmlFreeDoc(m_document);
}

void Tree::replace(xmlDoc* document) noexcept {
    xmlFreeDoc(m_document);
    m_document = document;
}

xmlNode* Tree::keepNew(xmlNode* made) {
    if (made == nullptr) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    try {
        keepDetached(made);
    } catch (...) {
        xmlFreeNode(made);
        throw;
    }
    return made;
}

void Tree::keepDetached(xmlNode* node) {
    m_detached.push_back(node);
    setPlace(node, m_detached.size());
}

void Tree::detach(xmlNode* node) {
    keepDetached(node); // first, for it may find no memory
    xmlUnlinkNode(node);
}

// By hand, not with xmlAddChild: that one merges neighbouring texts and frees the one that a handle may point to.
void Tree::append(xmlNode* parent, xmlNode* child) noexcept {
    forgetDetached(child);
    xmlUnlinkNode(child);
    child->parent = parent;
    child->prev = parent->last;
    if (parent->last != nullptr) {
        parent->last->next = child;
    } else {
        parent->children = child;
    }
    parent->last = child;
}

void Tree::forgetDetached(xmlNode* node) noexcept {
    const std::size_t place = placeOf(node);
    if (place == 0) {
        return;
    }
    m_detached[place - 1] = m_detached.back();
    setPlace(m_detached[place - 1], place);
    m_detached.pop_back();
    setPlace(node, 0);
}

xmlNode* nextInside(xmlNode* node, const xmlNode* top) noexcept {
    if (xmlNode* child = firstChildOf(node)) {
        return child;
    }
    while (node != top && node->next == nullptr) {
        node = node->parent;
    }
    return node == top ? nullptr : node->next;
}

} // namespace xml
