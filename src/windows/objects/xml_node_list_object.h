// A list of nodes as hosts see it.
#pragma once

#include "windows/com/automation_object.h"
#include "windows/com/quorvantisimage.h"
#include "xml/xml_node.h"

#include <utility>

namespace windows::com {

class XmlNodeListObject final : public AutomationObject<::_XmlNodeList> {
public:
    explicit XmlNodeListObject(xml::XmlNodeList nodes) noexcept : m_nodes(std::move(nodes)) {}

    HRESULT STDMETHODCALLTYPE get_length(LONG* value) noexcept override;
    HRESULT STDMETHODCALLTYPE get_item(LONG index, ::_XmlNode** value) noexcept override;
    // A method, not a property: some script engines ask for it only so.
    HRESULT STDMETHODCALLTYPE _NewEnum(IUnknown** value) noexcept override;

private:
    xml::XmlNodeList m_nodes;
};

} // namespace windows::com
