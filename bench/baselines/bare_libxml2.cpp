#include "baselines/bare_libxml2.h"

#include <libxml/parser.h>
#include <libxml/xmlsave.h>
#include <libxml/xpath.h>
#include <stdexcept>

namespace baselines {

BareDocument::BareDocument(std::string_view bytes)
    : m_document(xmlReadMemory(bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr,
                               XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_COMPACT | XML_PARSE_NOERROR |
                                   XML_PARSE_NOWARNING)) {
    if (m_document == nullptr) {
        throw std::runtime_error("the document does not load");
    }
}

BareDocument::~BareDocument() {
    xmlFreeDoc(static_cast<xmlDoc*>(m_document));
}

std::string BareDocument::text() const {
    xmlBuffer* const buffer = xmlBufferCreate();
    xmlBufferSetAllocationScheme(buffer, XML_BUFFER_ALLOC_DOUBLEIT);
    xmlSaveCtxt* const save = xmlSaveToBuffer(buffer, "UTF-8", XML_SAVE_NO_DECL);
    xmlSaveDoc(save, static_cast<xmlDoc*>(m_document));
    xmlSaveClose(save);
    std::string text(reinterpret_cast<const char*>(xmlBufferContent(buffer)),
                     static_cast<std::size_t>(xmlBufferLength(buffer)));
    xmlBufferFree(buffer);
    return text;
}

std::size_t BareDocument::count(const std::string& expression) const {
    xmlXPathContext* const context = xmlXPathNewContext(static_cast<xmlDoc*>(m_document));
    xmlXPathObject* const result =
        xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(expression.c_str()), context);
    const std::size_t matches =
        result != nullptr && result->nodesetval != nullptr ? static_cast<std::size_t>(result->nodesetval->nodeNr) : 0;
    xmlXPathFreeObject(result);
    xmlXPathFreeContext(context);
    return matches;
}

} // namespace baselines
