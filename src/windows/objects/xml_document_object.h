// A document of the component as hosts see it.
#pragma once

#include "ports/file_system.h"
#include "windows/objects/xml_node_members.h"

#include <memory>
#include <utility>

namespace windows::com {

class XmlDocumentObject final : public XmlNodeMembers<::_XmlDocument, OwnDocument> {
public:
    // `document` is not null; `fileSystem` is for load and save and outlives the object.
    XmlDocumentObject(std::shared_ptr<xml::XmlDocument> document, ports::FileSystem& fileSystem) noexcept
        : m_document(std::move(document)), m_fileSystem(fileSystem) {}

    HRESULT STDMETHODCALLTYPE get_documentElement(::_XmlNode** value) noexcept override;
    HRESULT STDMETHODCALLTYPE createElement(BSTR name, ::_XmlNode** value) noexcept override;
    HRESULT STDMETHODCALLTYPE loadXML(BSTR text, VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE load(BSTR path, VARIANT_BOOL* value) noexcept override;
    HRESULT STDMETHODCALLTYPE save(BSTR path) noexcept override;

    // OwnNode
    [[nodiscard]] xml::XmlNode node() const noexcept override { return m_document->node(); }
    // OwnDocument
    [[nodiscard]] const std::shared_ptr<xml::XmlDocument>& document() const noexcept override { return m_document; }

private:
    std::shared_ptr<xml::XmlDocument> m_document;
    ports::FileSystem& m_fileSystem;
};

// Nothing (null) for no document. `fileSystem` outlives the object.
[[nodiscard]] Microsoft::WRL::ComPtr<::_XmlDocument> makeXmlDocument(std::shared_ptr<xml::XmlDocument> document,
                                                                     ports::FileSystem& fileSystem);

} // namespace windows::com
