#include "windows/com/xml_document_object.h"

namespace windows::com {

HRESULT XmlDocumentObject::get_documentElement(::_XmlNode** value) noexcept {
    return give(value, [&] { return makeXmlNode(m_document->documentElement()); });
}

HRESULT XmlDocumentObject::createElement(BSTR name, ::_XmlNode** value) noexcept {
    return give(value, [&] { return makeXmlNode(m_document->createElement(fromBstr(name))); });
}

HRESULT XmlDocumentObject::loadXML(BSTR text, VARIANT_BOOL* value) noexcept {
    return run([&] {
        VARIANT_BOOL& result = target(value);
        result = toVariantBool(m_document->loadXml(fromBstr(text)));
    });
}

HRESULT XmlDocumentObject::load(BSTR path, VARIANT_BOOL* value) noexcept {
    return run([&] {
        VARIANT_BOOL& result = target(value);
        result = toVariantBool(m_document->load(m_fileSystem.readFile(fromBstr(path))));
    });
}

HRESULT XmlDocumentObject::save(BSTR path) noexcept {
    return run([&] { m_fileSystem.replaceFile(fromBstr(path), m_document->xml()); });
}

} // namespace windows::com
