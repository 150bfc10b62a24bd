// Runs XPath expressions.
#pragma once

#include "xml/tree.h"

#include <string_view>
#include <vector>

namespace xml {

// The matches in document order. Raises base::error::kUnspecified with the library's text for an expression that is
// invalid or gives a value in place of nodes, and 7.
[[nodiscard]] std::vector<xmlNode*> evaluate(std::string_view expression, xmlNode* context);

} // namespace xml
