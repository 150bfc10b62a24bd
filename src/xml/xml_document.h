// An XML document: loading, serialising, searching. The only door to the XML library for the rest of the system.
//
// Strict where a lenient reader would guess: duplicate attributes, stray text, unknown entities, forbidden characters
// and nesting over 256 levels are refused. No network and no other file is ever touched, entities stay unexpanded,
// white-space-only text does not exist, comments are kept.
#pragma once

#include "xml/element_view.h"
#include "xml/xml_node.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace xml {

// What a document type declaration does to a load.
enum class DocTypePolicy : std::uint8_t {
    Keep,  // stays in the document, nothing is expanded
    Refuse // the load fails; for documents that strangers send
};

class XmlDocument {
public:
    // An empty document: no child nodes.
    XmlDocument();
    // A moved-from document can only be assigned to or destroyed.
    XmlDocument(XmlDocument&&) noexcept = default;
    XmlDocument& operator=(XmlDocument&&) noexcept = default;
    ~XmlDocument() = default;

    // Replaces the content by what the bytes of a file say, in the encoding that they declare (UTF-8, UTF-16,
    // ISO-8859-x, windows-1252, US-ASCII; UTF-8 or UTF-16 by their marks). False when they are no well-formed document:
    // the document is empty then, and parseError() says why. Handles into the old content go on reading it. Raises 7.
    [[nodiscard]] bool load(std::string_view bytes, DocTypePolicy policy = DocTypePolicy::Keep);

    // The same for text that is in memory already: an encoding that it names is without meaning and is dropped.
    [[nodiscard]] bool loadXml(std::string_view text, DocTypePolicy policy = DocTypePolicy::Keep);

    // Why the last load failed, with the line; empty after one that did not.
    [[nodiscard]] const std::string& parseError() const noexcept { return m_parseError; }

    // The whole document as UTF-8 without a mark, ready to be a file. A declaration is written only where one was
    // loaded; one that named an encoding says UTF-8. No line break after the root. Raises 7.
    [[nodiscard]] std::string xml() const;

    // The document itself as a node: the context of searches, the parent of the root and of comments beside it.
    [[nodiscard]] XmlNode node() const;
    [[nodiscard]] XmlNode documentElement() const;
    [[nodiscard]] XmlNodeList childNodes() const { return node().childNodes(); }
    [[nodiscard]] XmlNode selectSingleNode(std::string_view expression) const {
        return node().selectSingleNode(expression);
    }
    [[nodiscard]] XmlNodeList selectNodes(std::string_view expression) const { return node().selectNodes(expression); }

    // A detached element without namespace. A name that is no XML name raises 5.
    [[nodiscard]] XmlNode createElement(std::string_view name);

    // True for a node of the present content, attached or not; false for one that an earlier load left behind.
    [[nodiscard]] bool owns(const XmlNode& node) const noexcept { return node.m_tree == m_tree; }

    // For code that walks whole documents: the root as a borrowed view, and the way back to a handle.
    [[nodiscard]] ElementView rootView() const noexcept;
    [[nodiscard]] XmlNode toNode(ElementView view) const;
    [[nodiscard]] static ElementView toView(const XmlNode& element) noexcept;

private:
    bool replace(std::string_view source, bool isText, DocTypePolicy policy);

    std::shared_ptr<Tree> m_tree;
    std::string m_parseError;
};

} // namespace xml
