// One of the two link documents: which pictures (images.xml) or specifications (rtf.xml) belong to which product.
//
// The document and the index over it can only be changed together, through this class. Searches answer exactly as the
// XPath expressions would that they stand for, built by plain concatenation without escaping: a code or file name with
// an apostrophe gives an expression that is invalid (raises xml's error) or valid with another meaning. Keep that.
#pragma once

#include "images/link_index.h"
#include "ports/clock.h"
#include "ports/file_system.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace images {

enum class LinkKind : std::uint8_t {
    Images,        // images.xml, root "images", files in the folder "images"
    Specifications // rtf.xml, root "rtf", files in the folder "rtf"; links carry a description in f4
};

class LinkDocument {
public:
    LinkDocument(LinkKind kind, ports::FileSystem& fileSystem, ports::Clock& clock);

    // Reads hostFolder + "images.xml" (or "rtf.xml"). Missing, empty, unreadable or malformed: the document starts
    // empty; that is no error, and nothing is written. A file that was there but could not be read is remembered: the
    // first save that would replace it first moves it aside to images.unreadable-yyyyMMdd_hhmmss.xml. A file without
    // declaration whose only fault is invalid UTF-8 is read as the ANSI code page (windows-1252).
    void open(std::string_view hostFolder);

    // "images/p[@f1='code']" (or "rtf/p..."): f2 of each link whose f3 is not "deleted", in document order.
    [[nodiscard]] std::vector<std::string> linkedFiles(std::string_view code) const;

    // First node of "images/p[@f1='code' and @f2='file']", asked so of BOTH kinds: in the specification document, whose
    // root is "rtf", it never finds anything and every manual link is added anew. Deliberate.
    [[nodiscard]] xml::XmlNode findLink(std::string_view code, std::string_view file) const;

    // First node of "//p[@f1='code' and @f2='file']".
    [[nodiscard]] xml::XmlNode findLinkAnywhere(std::string_view code, std::string_view file) const;

    // Appends a link to the root, with f3 "created"; description becomes f4. A document whose root has another name
    // raises 91, a value that XML cannot hold 5; nothing is changed then.
    void add(std::string_view code, std::string_view file, std::optional<std::string_view> description = {});

    // Takes a found link out of its parent, then marks the detached node "deleted".
    void remove(xml::XmlNode link);

    // After adding: the serialised text and a line break. After removing: the library's save, without one.
    // Both raise 70, 75, 76 or 61 with the old file untouched.
    void saveText();
    void save();

    [[nodiscard]] std::string path() const;

    // The document for reading. Changing it would leave the index behind.
    [[nodiscard]] const xml::XmlDocument& document() const noexcept { return m_document; }

private:
    void write(std::string_view bytes);

    LinkKind m_kind;
    ports::FileSystem& m_fileSystem;
    ports::Clock& m_clock;
    std::string m_hostFolder;
    xml::XmlDocument m_document;
    mutable LinkIndex m_index;
    bool m_keepUnreadable = false;
};

} // namespace images
