#include "xml/xml_document.h"

#include "base/runtime_error.h"
#include "xml/library.h"
#include "xml/node_text.h"
#include "xml/parser.h"
#include "xml/serializer.h"
#include "xml/tree.h"

#include <utility>

namespace xml {

XmlDocument::XmlDocument() {
    startLibrary();
    m_tree = std::make_shared<Tree>();
}

bool XmlDocument::load(std::string_view bytes, DocTypePolicy policy) {
    return replace(bytes, false, policy);
}

bool XmlDocument::loadXml(std::string_view text, DocTypePolicy policy) {
    return replace(text, true, policy);
}

bool XmlDocument::replace(std::string_view source, bool isText, DocTypePolicy policy) {
    *this = XmlDocument(); // whatever happens next, the old content is gone
    Parsed parsed = parse(source, isText, policy);
    if (!parsed.tree) {
        m_parseError = std::move(parsed.error);
        return false;
    }
    m_tree = std::move(parsed.tree);
    return true;
}

std::string XmlDocument::xml() const {
    return serialize(m_tree->documentNode());
}

XmlNode XmlDocument::node() const {
    return {m_tree, m_tree->documentNode()};
}

XmlNode XmlDocument::documentElement() const {
    return {m_tree, xmlDocGetRootElement(m_tree->document())};
}

XmlNode XmlDocument::createElement(std::string_view name) {
    if (!isXmlName(name)) {
        throw base::RuntimeError(base::error::kInvalidProcedureCall);
    }
    const std::string terminated(name);
    return {m_tree, m_tree->keepNew(xmlNewDocNode(m_tree->document(), nullptr,
                                                  reinterpret_cast<const xmlChar*>(terminated.c_str()), nullptr))};
}

ElementView XmlDocument::rootView() const noexcept {
    return ElementView(xmlDocGetRootElement(m_tree->document()));
}

XmlNode XmlDocument::toNode(ElementView view) const {
    return {m_tree, view.m_node};
}

ElementView XmlDocument::toView(const XmlNode& element) noexcept {
    return ElementView(element.type() == NodeType::Element ? element.m_node : nullptr);
}

} // namespace xml
