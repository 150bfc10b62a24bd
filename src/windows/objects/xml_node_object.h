// A node as hosts see it.
#pragma once

#include "windows/objects/xml_node_members.h"

#include <utility>

namespace windows::com {

class XmlNodeObject final : public XmlNodeMembers<::_XmlNode> {
public:
    // `node` is one.
    explicit XmlNodeObject(xml::XmlNode node) noexcept : m_node(std::move(node)) {}

    HRESULT STDMETHODCALLTYPE getAttribute(BSTR name, VARIANT* value) noexcept override;
    HRESULT STDMETHODCALLTYPE setAttribute(BSTR name, VARIANT value) noexcept override;
    HRESULT STDMETHODCALLTYPE removeAttribute(BSTR name) noexcept override;

    // OwnNode
    [[nodiscard]] xml::XmlNode node() const noexcept override { return m_node; }

private:
    xml::XmlNode m_node;
};

} // namespace windows::com
