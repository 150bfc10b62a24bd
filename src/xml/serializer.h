// Writes trees as UTF-8 text.
#pragma once

#include "xml/tree.h"

#include <string>

namespace xml {

// One node with all below it; a document with its declaration, if it had one. Raises 7.
[[nodiscard]] std::string serialize(xmlNode* node);

} // namespace xml
