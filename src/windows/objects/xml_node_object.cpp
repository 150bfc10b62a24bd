#include "windows/objects/xml_node_object.h"

#include "base/runtime_error.h"
#include "windows/com/adopt.h"

namespace windows::com {

using Microsoft::WRL::ComPtr;

HRESULT XmlNodeObject::getAttribute(BSTR name, VARIANT* value) noexcept {
    return run([&] {
        VARIANT& result = target(value);
        const std::string key = fromBstr(name);
        ScopedVariant found;
        toVariant(m_node.hasAttribute(key) ? base::Variant(m_node.getAttribute(key)) : base::Null{}, found);
        result = found.release();
    });
}

HRESULT XmlNodeObject::setAttribute(BSTR name, VARIANT value) noexcept {
    return run([&] { m_node.setAttribute(fromBstr(name), base::toText(fromVariant(value))); });
}

HRESULT XmlNodeObject::removeAttribute(BSTR name) noexcept {
    return run([&] { m_node.removeAttribute(fromBstr(name)); });
}

ComPtr<::_XmlNode> makeXmlNode(const xml::XmlNode& node) {
    return node ? adopt<::_XmlNode>(new XmlNodeObject(node)) : nullptr;
}

xml::XmlNode nodeOf(IUnknown* object) {
    if (object == nullptr) {
        return {};
    }
    ComPtr<OwnNode> own;
    if (FAILED(object->QueryInterface(IID_PPV_ARGS(&own)))) {
        throw base::RuntimeError(base::error::kTypeMismatch);
    }
    return own->node();
}

} // namespace windows::com
