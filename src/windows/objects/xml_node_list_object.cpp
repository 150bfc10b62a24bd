#include "windows/objects/xml_node_list_object.h"

#include "windows/com/adopt.h"
#include "windows/com/enumerator.h"
#include "windows/objects/xml_node_members.h"

namespace windows::com {

using Microsoft::WRL::ComPtr;

HRESULT XmlNodeListObject::get_length(LONG* value) noexcept {
    return run([&] { target(value) = static_cast<LONG>(m_nodes.size()); });
}

HRESULT XmlNodeListObject::get_item(LONG index, ::_XmlNode** value) noexcept {
    // A negative number turns into one past the end.
    return give(value, [&] { return makeXmlNode(m_nodes[static_cast<ULONG>(index)]); });
}

HRESULT XmlNodeListObject::_NewEnum(IUnknown** value) noexcept {
    return give(value, [&] {
        const auto fill = [nodes = m_nodes](std::size_t index, VARIANT& item) {
            V_VT(&item) = VT_EMPTY;
            V_DISPATCH(&item) = makeXmlNode(nodes[index]).Detach();
            V_VT(&item) = VT_DISPATCH;
        };
        return adopt<IUnknown>(new Enumerator<IEnumVARIANT, VARIANT>(m_nodes.size(), fill));
    });
}

ComPtr<::_XmlNodeList> makeXmlNodeList(xml::XmlNodeList nodes) {
    return adopt<::_XmlNodeList>(new XmlNodeListObject(std::move(nodes)));
}

} // namespace windows::com
