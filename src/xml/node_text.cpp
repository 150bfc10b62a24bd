#include "xml/node_text.h"

#include "base/text.h"

#include <algorithm>

namespace xml {
namespace {

bool isCharacterData(const xmlNode* node) noexcept {
    return (node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE) && node->content != nullptr;
}

} // namespace

void appendParts(const xmlNode* first, std::string& out) {
    for (const xmlNode* part = first; part != nullptr; part = part->next) {
        if (isCharacterData(part)) {
            out += reinterpret_cast<const char*>(part->content);
        }
    }
}

void appendText(xmlNode* node, std::string& out) {
    if (node->type == XML_ATTRIBUTE_NODE) {
        appendParts(node->children, out);
    } else if (node->type == XML_COMMENT_NODE || node->type == XML_PI_NODE) {
        out += node->content != nullptr ? reinterpret_cast<const char*>(node->content) : "";
    } else {
        for (xmlNode* part = node; part != nullptr; part = nextInside(part, node)) {
            if (isCharacterData(part)) {
                out += reinterpret_cast<const char*>(part->content);
            }
        }
    }
}

bool isXmlText(std::string_view text) noexcept {
    const auto isControl = [](char c) {
        const auto byte = static_cast<unsigned char>(c);
        return byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r';
    };
    return std::none_of(text.begin(), text.end(), isControl) && base::isValidUtf8(text) &&
           text.find("\xEF\xBF\xBE") == std::string_view::npos && text.find("\xEF\xBF\xBF") == std::string_view::npos;
}

bool isXmlName(std::string_view name) {
    return isXmlText(name) && xmlValidateName(reinterpret_cast<const xmlChar*>(std::string(name).c_str()), 0) == 0;
}

} // namespace xml
