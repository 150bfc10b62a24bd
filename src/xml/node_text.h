// The text in nodes, read without ever following an entity reference, and the rules for text that is to go in.
#pragma once

#include "xml/tree.h"

#include <string>
#include <string_view>

namespace xml {

// Adds the texts among `first` and the siblings after it.
void appendParts(const xmlNode* first, std::string& out);

// Adds all character data in and below a node.
void appendText(xmlNode* node, std::string& out);

// True when XML 1.0 can hold every character: strict UTF-8, no control characters but tab, line feed and carriage
// return, no surrogates, neither U+FFFE nor U+FFFF.
[[nodiscard]] bool isXmlText(std::string_view text) noexcept;

// True for a name that an element or attribute may have.
[[nodiscard]] bool isXmlName(std::string_view name);

} // namespace xml
