// The library's document with everything that was ever in it. Only the files of this folder see the library.
#pragma once

#include <libxml/tree.h>
#include <vector>

namespace xml {

class Tree {
public:
    // An empty document. Raises 7.
    Tree();
    Tree(const Tree&) = delete;
    Tree& operator=(const Tree&) = delete;
    ~Tree();

    [[nodiscard]] xmlDoc* document() const noexcept { return m_document; }
    [[nodiscard]] xmlNode* documentNode() const noexcept { return reinterpret_cast<xmlNode*>(m_document); }

    // Takes ownership of another document in place of the empty one.
    void replace(xmlDoc* document) noexcept;

    // Keeps a node just made, which has no parent yet, and returns it. Null (no memory was found for it) raises 7.
    xmlNode* keepNew(xmlNode* made);
    // Takes a node out of its parent and keeps it.
    void detach(xmlNode* node);
    // Makes a node of this tree the last child, wherever it was before.
    void append(xmlNode* parent, xmlNode* child) noexcept;

private:
    void keepDetached(xmlNode* node);
    void forgetDetached(xmlNode* node) noexcept;

    xmlDoc* m_document;
    // A node in here knows its place (counted from 1) in its _private field, so leaving the list costs nothing.
    std::vector<xmlNode*> m_detached;
};

// Hides the document type while the library reads values: it would expand references to the entities declared there.
class DocTypeHidden {
public:
    explicit DocTypeHidden(xmlDoc* document) noexcept : m_document(document), m_docType(document->intSubset) {
        document->intSubset = nullptr;
    }
    DocTypeHidden(const DocTypeHidden&) = delete;
    DocTypeHidden& operator=(const DocTypeHidden&) = delete;
    ~DocTypeHidden() { m_document->intSubset = m_docType; }

private:
    xmlDoc* m_document;
    xmlDtd* m_docType;
};

// The next node in document order inside `top`, which comes first. Goes into elements and documents only.
[[nodiscard]] xmlNode* nextInside(xmlNode* node, const xmlNode* top) noexcept;

// The children that the layer shows: none of a document type, an entity reference or an attribute.
[[nodiscard]] inline xmlNode* firstChildOf(const xmlNode* node) noexcept {
    return node->type == XML_ELEMENT_NODE || node->type == XML_DOCUMENT_NODE ? node->children : nullptr;
}

} // namespace xml
