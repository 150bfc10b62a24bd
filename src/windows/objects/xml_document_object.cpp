#include "windows/objects/xml_document_object.h"

#include "windows/com/adopt.h"

namespace windows::com {

HRESULT XmlDocumentObject::get_documentElement(::_XmlNode** value) noexcept {
    return give(value, [&] { return makeXmlNode(m_document->documentElement()); });
}

HRESULT XmlDocumentObject::createElement(BSTR name, ::_XmlNode** value) noexcept {
    return give(value, [&] { return makeXmlNode(m_document->createElement(fromBstr(name))); });
}

HRESULT XmlDocumentObject::loadXML(BSTR text, VARIANT_BOOL* value) noexcept {
    return give(value, [&] { return m_document->loadXml(fromBstr(text)); });
}

HRESULT XmlDocumentObject::load(BSTR path, VARIANT_BOOL* value) noexcept {
    return give(value, [&] { return m_document->load(m_fileSystem.readFile(fromBstr(path))); });
}

HRESULT XmlDocumentObject::save(BSTR path) noexcept {
    return run([&] { m_fileSystem.replaceFile(fromBstr(path), m_document->xml()); });
}

Microsoft::WRL::ComPtr<::_XmlDocument> makeXmlDocument(std::shared_ptr<xml::XmlDocument> document,
                                                       ports::FileSystem& fileSystem) {
    return document ? adopt<::_XmlDocument>(new XmlDocumentObject(std::move(document), fileSystem)) : nullptr;
}

} // namespace windows::com
