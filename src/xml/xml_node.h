// A node of an XML document, and a list of nodes: cheap handles that never outlive what they point to.
//
// A handle keeps the tree of its document alive, also after the document object is gone or has loaded something else.
// A removed node stays readable, and can be appended again, for as long as any handle or the document lives. An empty
// handle means "no node": reading from it gives "" or nothing, changing it raises 91.
//
// A tree and all handles into it belong to one thread at a time. All text is UTF-8. Every method that changes a tree,
// searches or serialises may raise 7 (out of memory).
#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct _xmlNode; // NOLINT(bugprone-reserved-identifier): the library's own name, so that no header of it is needed here

namespace xml {

class Tree;
class XmlNodeList;

enum class NodeType : std::uint8_t {
    None, // no node
    Element,
    Attribute,
    Text,
    CData,
    EntityReference, // kept as written, never expanded
    ProcessingInstruction,
    Comment,
    Document,
    DocumentType
};

struct Attribute {
    std::string name; // with its prefix
    std::string value;
    friend bool operator==(const Attribute&, const Attribute&) = default;
};

class XmlNode {
public:
    XmlNode() noexcept = default;

    [[nodiscard]] explicit operator bool() const noexcept { return m_node != nullptr; }
    // The same node, not merely an equal one.
    friend bool operator==(const XmlNode& a, const XmlNode& b) noexcept { return a.m_node == b.m_node; }
    // Equal for handles to the same node while its tree lives; a key for look-ups.
    [[nodiscard]] const void* identity() const noexcept { return m_node; }

    [[nodiscard]] NodeType type() const noexcept;

    // The qualified name of an element, attribute, instruction or document type, else "#text", "#cdata-section",
    // "#comment", "#document"; the bare name of an entity reference.
    [[nodiscard]] std::string nodeName() const;

    // The character data in and below the node, without comments, instructions and entity references; the content of a
    // comment or an instruction itself.
    [[nodiscard]] std::string text() const;
    // Puts one text (none, if it is empty) in place of all that an element holds; what it held is detached. A character
    // that XML 1.0 cannot hold, or a node that is no element, raises 5, and nothing is changed then.
    void setText(std::string_view text);

    // The node as markup: not indented, an empty element as <p/>, ">" escaped in attribute values too.
    [[nodiscard]] std::string xml() const;

    // An attribute has neither parent nor siblings. The root's parent is the document, whose parent is no node.
    [[nodiscard]] XmlNode parentNode() const;
    [[nodiscard]] XmlNode firstChild() const;
    [[nodiscard]] XmlNode lastChild() const;
    [[nodiscard]] XmlNode nextSibling() const;
    [[nodiscard]] XmlNode previousSibling() const;
    // The children at this moment, in order; later changes to the tree do not change the list.
    [[nodiscard]] XmlNodeList childNodes() const;

    // In document order. Only elements have attributes.
    [[nodiscard]] std::vector<Attribute> attributes() const;
    // "" when absent. Names are qualified names.
    [[nodiscard]] std::string getAttribute(std::string_view name) const;
    [[nodiscard]] bool hasAttribute(std::string_view name) const;
    // Adds the attribute or replaces its value. A name that is no XML name, or a value with a character that XML 1.0
    // cannot hold, raises 5; so does a node that is no element. Nothing is changed then.
    void setAttribute(std::string_view name, std::string_view value);

    // An element without the attribute stays as it is; a node that is no element raises 5.
    void removeAttribute(std::string_view name);

    // XPath 1.0 with this node as the context; matches in document order. An expression that does not compile, fails or
    // gives no nodes but a value raises base::error::kUnspecified with the library's text. From no node: no match.
    [[nodiscard]] XmlNode selectSingleNode(std::string_view expression) const;
    [[nodiscard]] XmlNodeList selectNodes(std::string_view expression) const;

    // Makes `child` the last child and returns it. A node of the same tree moves; of a node of another tree a copy is
    // taken (and returned). Raises 5 when this node cannot have such a child: `child` is no node, or an attribute, or
    // holds this node, or a document would get a second root.
    XmlNode appendChild(const XmlNode& child);

    // Takes `child` out of this node and returns it, detached. No child: does nothing. Another node's child raises 5.
    XmlNode removeChild(const XmlNode& child);

private:
    friend class XmlDocument;
    friend class XmlNodeList;
    XmlNode(std::shared_ptr<Tree> tree, _xmlNode* node) noexcept;
    [[nodiscard]] XmlNode handle(_xmlNode* node) const;

    std::shared_ptr<Tree> m_tree;
    _xmlNode* m_node = nullptr;
};

// A fixed list of nodes. Reaching one by its number costs the same wherever it is.
class XmlNodeList {
public:
    class Iterator {
    public:
        using iterator_category = std::input_iterator_tag;
        using value_type = XmlNode;
        using difference_type = std::ptrdiff_t;
        using pointer = void;
        using reference = XmlNode;
        Iterator(const XmlNodeList& list, std::size_t index) noexcept : m_list(&list), m_index(index) {}
        XmlNode operator*() const { return (*m_list)[m_index]; }
        Iterator& operator++() noexcept {
            ++m_index;
            return *this;
        }
        friend bool operator==(const Iterator&, const Iterator&) = default;

    private:
        const XmlNodeList* m_list;
        std::size_t m_index;
    };

    XmlNodeList() noexcept = default;

    [[nodiscard]] std::size_t size() const noexcept { return m_nodes.size(); }
    [[nodiscard]] bool empty() const noexcept { return m_nodes.empty(); }
    // Counted from 0; past the end: no node.
    [[nodiscard]] XmlNode operator[](std::size_t index) const;
    [[nodiscard]] Iterator begin() const noexcept { return {*this, 0}; }
    [[nodiscard]] Iterator end() const noexcept { return {*this, size()}; }

private:
    friend class XmlNode;
    XmlNodeList(std::shared_ptr<Tree> tree, std::vector<_xmlNode*> nodes) noexcept
        : m_tree(std::move(tree)), m_nodes(std::move(nodes)) {}

    std::shared_ptr<Tree> m_tree;
    std::vector<_xmlNode*> m_nodes;
};

} // namespace xml
