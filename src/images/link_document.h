// One of the two link documents: which pictures (images.xml) or specifications (rtf.xml) belong to which product.
//
// The document and the index over it can only be changed together, through this class: it gives out links to read and
// no nodes. Searches answer exactly as the XPath expressions would that they stand for, built by plain concatenation
// without escaping: a code or file name with an apostrophe gives an expression that is invalid (raises xml's error) or
// valid with another meaning. Keep that.
#pragma once

#include "images/link_index.h"
#include "ports/clock.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace images {

enum class LinkKind : std::uint8_t {
    Images,        // images.xml, root "images", files in the folder "images"
    Specifications // rtf.xml, root "rtf", files in the folder "rtf"; links carry a description in f4
};

// One link, to read. Stays readable after its removal and after its document has gone. An empty one means "none".
class Link {
public:
    Link() noexcept = default;

    [[nodiscard]] explicit operator bool() const noexcept { return static_cast<bool>(m_node); }
    friend bool operator==(const Link&, const Link&) noexcept = default;

    // An absent attribute reads as "".
    [[nodiscard]] std::string code() const { return m_node.getAttribute("f1"); }
    [[nodiscard]] std::string file() const { return m_node.getAttribute("f2"); }
    [[nodiscard]] std::string status() const { return m_node.getAttribute("f3"); } // "created", "deleted"
    [[nodiscard]] std::string description() const { return m_node.getAttribute("f4"); }

private:
    friend class LinkDocument;
    explicit Link(xml::XmlNode node) noexcept : m_node(std::move(node)) {}

    xml::XmlNode m_node;
};

// Every method may raise 7 (out of memory).
class LinkDocument {
public:
    // The ports are not owned and outlive the document.
    LinkDocument(LinkKind kind, ports::FileSystem& fileSystem, ports::Clock& clock, ports::CodePage& ansi);

    // Reads hostFolder + "images.xml" (or "rtf.xml"). Missing, empty, unreadable or malformed: the document starts
    // empty; that is no error, and nothing is written. A file that was there but could not be read is remembered: the
    // first save that would replace it first moves it aside to images.unreadable-yyyyMMdd_hhmmss.xml. A file without
    // declaration whose only fault is invalid UTF-8 is read as the ANSI code page.
    void open(std::string_view hostFolder);

    // "images/p[@f1='code']" (or "rtf/p..."): f2 of each link whose f3 is not "deleted", in document order.
    [[nodiscard]] std::vector<std::string> linkedFiles(std::string_view code) const;

    // "images/p[@f1='code']" (or "rtf/p..."): f2 of each link whatever its f3, in document order.
    [[nodiscard]] std::vector<std::string> linkedFilesOfAnyStatus(std::string_view code) const;

    // True when one of the nodes "//p[@f1='code']" has exactly this f2.
    [[nodiscard]] bool isLinked(std::string_view code, std::string_view file) const;

    // First node of "images/p[@f1='code' and @f2='file']", asked so of BOTH kinds: in rtf.xml, whose root
    // is "rtf", it never finds anything and every manual link is added anew, so that one document can have several
    // descriptions.
    [[nodiscard]] Link findLink(std::string_view code, std::string_view file) const;

    // First node of "//p[@f1='code' and @f2='file']".
    [[nodiscard]] Link findLinkAnywhere(std::string_view code, std::string_view file) const;

    // Appends a link to the root, with f3 "created"; description becomes f4. A document whose root has another name
    // raises 91, a value that XML cannot hold 5; nothing is changed then.
    void add(std::string_view code, std::string_view file, std::optional<std::string_view> description = {});

    // Takes a found link out of its parent, then marks the detached node "deleted". None: does nothing. A link that is
    // in this document no longer raises 91.
    void remove(const Link& link);

    // Takes out of the root, in one pass over its children, the links that the system does not need: those whose file
    // is named exactly after their code (whatever the case), and of each group of equal links all but the first two.
    // Nothing is saved. The pass visits positions 0 to N - 1 of the child list, N taken once, and the list closes up
    // under it: after a removal the child that moves into the place is not examined, so a run can leave
    // some for the next one. `proceed` is called
    // once a child; false ends the pass. A value that makes an invalid expression raises, with what was removed so far
    // removed.
    void cleanUp(const std::function<bool()>& proceed);

    // Every link of the document, at any depth, in document order until `visit` returns false.
    void forEachLink(const std::function<bool(const Link& link)>& visit) const;

    // After adding: the serialised text and a line break. After removing: the library's save, without one.
    // Both raise 70, 75, 76 or 61 with the old file untouched.
    void saveText();
    void save();

    [[nodiscard]] std::string path() const;

    // The whole document as it would be saved.
    [[nodiscard]] std::string xml() const { return m_document.xml(); }

private:
    class Passed; // of the clean-up

    [[nodiscard]] std::vector<std::string> filesOf(std::string_view code, bool deletedToo) const;
    // Those after the first `skipped`, in document order.
    [[nodiscard]] std::vector<xml::XmlNode> equalLinks(std::string_view code, std::string_view file,
                                                       std::size_t skipped) const;
    void detach(xml::XmlNode node);
    [[nodiscard]] bool read(std::string& bytes);
    [[nodiscard]] bool load(std::string_view bytes);
    [[nodiscard]] const LinkIndex& index() const;
    void write(std::string_view bytes);
    [[nodiscard]] std::string moveUnreadableAside();

    LinkKind m_kind;
    ports::FileSystem& m_fileSystem;
    ports::Clock& m_clock;
    ports::CodePage& m_ansi;
    std::string m_hostFolder;
    xml::XmlDocument m_document;
    mutable LinkIndex m_index; // built at the first look-up
    bool m_keepUnreadable = false;
};

} // namespace images
