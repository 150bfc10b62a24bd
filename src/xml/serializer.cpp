#include "xml/serializer.h"

#include "base/runtime_error.h"
#include "xml/library.h"

#include <libxml/xmlIO.h>
#include <libxml/xmlsave.h>
#include <new>
#include <utility>

namespace xml {
namespace {

// How the library marks a document without declaration.
constexpr int kNoDeclaration = -1;

struct Sink {
    std::string text;
    bool outOfMemory = false;
};

int appendToSink(void* context, const char* bytes, int length) {
    auto& sink = *static_cast<Sink*>(context);
    try {
        sink.text.append(bytes, static_cast<std::size_t>(length));
        return length;
    } catch (const std::bad_alloc&) {
        sink.outOfMemory = true;
        return -1;
    }
}

// The library writes non-ASCII characters of attributes as numbers unless the document itself names an encoding.
class EncodingNamed {
public:
    explicit EncodingNamed(xmlDoc* document) noexcept : m_document(document), m_encoding(document->encoding) {
        document->encoding = reinterpret_cast<const xmlChar*>("UTF-8");
    }
    EncodingNamed(const EncodingNamed&) = delete;
    EncodingNamed& operator=(const EncodingNamed&) = delete;
    ~EncodingNamed() { m_document->encoding = m_encoding; }

private:
    xmlDoc* m_document;
    const xmlChar* m_encoding;
};

void appendDeclaration(const xmlDoc& document, std::string& out) {
    if (document.standalone == kNoDeclaration) {
        return;
    }
    out += "<?xml version=\"";
    out += document.version != nullptr ? reinterpret_cast<const char*>(document.version) : "1.0";
    out += '"';
    if (document.encoding != nullptr) {
        out += " encoding=\"UTF-8\"";
    }
    if (document.standalone >= 0) {
        out += document.standalone == 1 ? " standalone=\"yes\"" : " standalone=\"no\"";
    }
    out += "?>\n";
}

void writeNode(xmlNode* node, Sink& sink) {
    const MemoryWatch memory;
    const EncodingNamed encoding(node->doc);
    xmlOutputBuffer* const buffer = xmlOutputBufferCreateIO(appendToSink, nullptr, &sink, nullptr);
    if (buffer == nullptr) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    xmlNodeDumpOutput(buffer, node->doc, node, 0, 0, "UTF-8");
    const bool closed = xmlOutputBufferClose(buffer) >= 0;
    memory.check();
    if (!closed || sink.outOfMemory) {
        throw base::RuntimeError(base::error::kOutOfMemory); // nothing else can fail in memory
    }
}

} // namespace

std::string serialize(xmlNode* node) {
    Sink sink;
    if (node->type != XML_DOCUMENT_NODE) {
        writeNode(node, sink);
        return std::move(sink.text);
    }
    appendDeclaration(*node->doc, sink.text);
    for (xmlNode* child = node->children; child != nullptr; child = child->next) {
        writeNode(child, sink);
        if (child->next != nullptr) {
            sink.text += '\n';
        }
    }
    return std::move(sink.text);
}

} // namespace xml
