#include "images/link_document.h"

#include "base/date_time.h"
#include "base/resume_next.h"
#include "base/runtime_error.h"
#include "base/text.h"

#include <algorithm>
#include <new>
#include <utility>

namespace images {
namespace {

using base::RuntimeError;
namespace error = base::error;

constexpr std::string_view kDeleted = "deleted";

std::string_view rootName(LinkKind kind) noexcept {
    return kind == LinkKind::Images ? "images" : "rtf";
}

// An apostrophe ends the literal in an expression, and a control character makes it invalid. Only the real expression
// knows what such a value then asks for.
bool needsExpression(std::string_view value) noexcept {
    return std::any_of(value.begin(), value.end(), [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return c == '\'' || (byte < 0x20 && c != '\t' && c != '\n' && c != '\r');
    });
}

std::string codeExpression(std::string_view path, std::string_view code) {
    return std::string(path).append("[@f1='").append(code).append("']");
}

std::string pairExpression(std::string_view path, std::string_view code, std::string_view file) {
    return std::string(path).append("[@f1='").append(code).append("' and @f2='").append(file).append("']");
}

bool isMissingFile(const RuntimeError& e) noexcept {
    return e.number() == error::kFileNotFound || e.number() == error::kPathNotFound ||
           e.number() == error::kBadFileName;
}

bool hasEncodingMark(std::string_view bytes) noexcept {
    return bytes.starts_with("<?xml") || bytes.starts_with("\xEF\xBB\xBF");
}

} // namespace

LinkDocument::LinkDocument(LinkKind kind, ports::FileSystem& fileSystem, ports::Clock& clock, ports::CodePage& ansi)
    : m_kind(kind), m_fileSystem(fileSystem), m_clock(clock), m_ansi(ansi) {}

std::string LinkDocument::path() const {
    return m_hostFolder + std::string(rootName(m_kind)) + ".xml";
}

void LinkDocument::open(std::string_view hostFolder) {
    m_hostFolder = hostFolder;
    m_index.clear();
    m_document = xml::XmlDocument();
    m_keepUnreadable = true; // until the file proves readable or absent, also when memory runs out on the way
    std::string bytes;
    if (read(bytes) && load(bytes)) {
        m_keepUnreadable = false;
        return;
    }
    const std::string root(rootName(m_kind));
    if (!m_document.loadXml("<" + root + "/>")) {
        throw RuntimeError(error::kInternalError);
    }
}

// False: no content, or none that can be had now.
bool LinkDocument::read(std::string& bytes) {
    if (const auto error = base::attempt([&] { bytes = m_fileSystem.readFile(path()); })) {
        m_keepUnreadable = !isMissingFile(*error);
        return false;
    }
    m_keepUnreadable = !bytes.empty();
    return !bytes.empty();
}

bool LinkDocument::load(std::string_view bytes) {
    if (m_document.load(bytes)) {
        return true;
    }
    return !hasEncodingMark(bytes) && !base::isValidUtf8(bytes) && m_document.loadXml(m_ansi.decode(bytes));
}

const LinkIndex& LinkDocument::index() const {
    if (!m_index.isBuilt()) {
        m_index.build(m_document.rootView());
    }
    return m_index;
}

std::vector<std::string> LinkDocument::linkedFiles(std::string_view code) const {
    return filesOf(code, false);
}

std::vector<std::string> LinkDocument::linkedFilesOfAnyStatus(std::string_view code) const {
    return filesOf(code, true);
}

std::vector<std::string> LinkDocument::filesOf(std::string_view code, bool deletedToo) const {
    std::vector<std::string> files;
    if (needsExpression(code)) {
        const std::string path = std::string(rootName(m_kind)) + "/p";
        for (const xml::XmlNode& node : m_document.selectNodes(codeExpression(path, code))) {
            if (deletedToo || node.getAttribute("f3") != kDeleted) {
                files.push_back(node.getAttribute("f2"));
            }
        }
        return files;
    }
    const xml::ElementView root = m_document.rootView();
    if (!root.isNamed(rootName(m_kind))) {
        return files;
    }
    std::string scratch;
    index().forEach(code, [&](xml::ElementView link) {
        if (link.parent() == root && (deletedToo || link.attribute("f3", scratch) != kDeleted)) {
            files.emplace_back(link.attribute("f2", scratch).value_or(std::string_view()));
        }
        return true;
    });
    return files;
}

bool LinkDocument::isLinked(std::string_view code, std::string_view file) const {
    if (!needsExpression(code) && !needsExpression(file)) {
        return static_cast<bool>(findLinkAnywhere(code, file));
    }
    const xml::XmlNodeList nodes = m_document.selectNodes(codeExpression("//p", code));
    return std::any_of(nodes.begin(), nodes.end(),
                       [&](const xml::XmlNode& node) { return node.getAttribute("f2") == file; });
}

Link LinkDocument::findLink(std::string_view code, std::string_view file) const {
    if (needsExpression(code) || needsExpression(file)) {
        return Link(m_document.selectSingleNode(pairExpression("images/p", code, file)));
    }
    const xml::ElementView root = m_document.rootView();
    xml::ElementView found;
    if (root.isNamed("images")) {
        index().forEach(code, file, [&](xml::ElementView link) {
            found = link.parent() == root ? link : xml::ElementView();
            return !found;
        });
    }
    return Link(m_document.toNode(found));
}

Link LinkDocument::findLinkAnywhere(std::string_view code, std::string_view file) const {
    if (needsExpression(code) || needsExpression(file)) {
        return Link(m_document.selectSingleNode(pairExpression("//p", code, file)));
    }
    xml::ElementView found;
    index().forEach(code, file, [&](xml::ElementView link) {
        found = link;
        return false;
    });
    return Link(m_document.toNode(found));
}

void LinkDocument::add(std::string_view code, std::string_view file, std::optional<std::string_view> description) {
    if (!m_document.rootView().isNamed(rootName(m_kind))) {
        throw RuntimeError(error::kObjectNotSet);
    }
    // Complete before it is appended, so that a value that XML cannot hold leaves no half link behind.
    xml::XmlNode link = m_document.createElement("p");
    link.setAttribute("f1", code);
    link.setAttribute("f2", file);
    link.setAttribute("f3", "created");
    if (description) {
        link.setAttribute("f4", *description);
    }
    m_document.documentElement().appendChild(link);
    if (m_index.isBuilt()) {
        try {
            m_index.add(xml::XmlDocument::toView(link));
        } catch (const std::bad_alloc&) {
            m_index.clear(); // the next look-up builds it anew
        }
    }
}

void LinkDocument::remove(const Link& link) {
    if (!link) {
        return;
    }
    xml::XmlNode node = link.m_node;
    if (!node.parentNode() || !m_document.owns(node)) {
        throw RuntimeError(error::kObjectNotSet);
    }
    detach(node);
    node.setAttribute("f3", kDeleted);
}

void LinkDocument::detach(xml::XmlNode node) {
    if (m_index.isBuilt()) {
        m_index.removeWithin(xml::XmlDocument::toView(node));
    }
    node.parentNode().removeChild(node);
}

std::vector<xml::XmlNode> LinkDocument::equalLinks(std::string_view code, std::string_view file,
                                                   std::size_t skipped) const {
    std::vector<xml::XmlNode> found;
    if (needsExpression(code) || needsExpression(file)) {
        const xml::XmlNodeList nodes = m_document.selectNodes(pairExpression("//p", code, file));
        for (std::size_t i = skipped; i < nodes.size(); ++i) {
            found.push_back(nodes[i]);
        }
        return found;
    }
    index().forEach(code, file, [&](xml::ElementView link) {
        if (skipped > 0) {
            --skipped;
        } else {
            found.push_back(m_document.toNode(link));
        }
        return true;
    });
    return found;
}

void LinkDocument::forEachLink(const std::function<bool(const Link& link)>& visit) const {
    const xml::ElementView root = m_document.rootView();
    for (xml::ElementView element = root; element; element = element.nextInside(root)) {
        if (element.isNamed("p") && !visit(Link(m_document.toNode(element)))) {
            return;
        }
    }
}

void LinkDocument::saveText() {
    write(m_document.xml() + "\r\n");
}

void LinkDocument::save() {
    write(m_document.xml());
}

void LinkDocument::write(std::string_view bytes) {
    const std::string kept = moveUnreadableAside();
    try {
        m_fileSystem.replaceFile(path(), bytes);
    } catch (...) {
        if (!kept.empty()) { // put it back if that is possible; if not, it is safe where it is
            base::resumeNext([&] { m_fileSystem.moveFile(kept, path()); });
        }
        throw;
    }
    m_keepUnreadable = false;
}

// Returns where the unreadable file went; "" when there was none.
std::string LinkDocument::moveUnreadableAside() {
    if (!m_keepUnreadable || !m_fileSystem.fileExists(path())) {
        return {};
    }
    std::string kept =
        m_hostFolder + std::string(rootName(m_kind)) + ".unreadable-" + base::fileTimestamp(m_clock.now()) + ".xml";
    m_fileSystem.moveFile(path(), kept);
    return kept;
}

} // namespace images
