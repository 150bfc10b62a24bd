#include "xml/xpath.h"

#include "base/runtime_error.h"
#include "xml/library.h"

#include <libxml/xpath.h>
#include <memory>
#include <string>

namespace xml {
namespace {

template <auto Free>
struct Freed {
    template <typename T>
    void operator()(T* object) const noexcept {
        Free(object);
    }
};

using Context = std::unique_ptr<xmlXPathContext, Freed<xmlXPathFreeContext>>;
using Result = std::unique_ptr<xmlXPathObject, Freed<xmlXPathFreeObject>>;

// Keeps the library from reporting anywhere else; the context remembers the error.
void ignoreError(void*, xmlErrorPtr) {}

[[noreturn]] void raise(const xmlError& error, std::string_view expression) {
    std::string text = error.message != nullptr ? error.message : "Invalid expression";
    while (!text.empty() && text.back() == '\n') {
        text.pop_back();
    }
    throw base::RuntimeError(base::error::kUnspecified, text + ": " + std::string(expression));
}

} // namespace

std::vector<xmlNode*> evaluate(std::string_view expression, xmlNode* node) {
    if (expression.find('\0') != std::string_view::npos) {
        throw base::RuntimeError(base::error::kUnspecified, "Invalid expression: it holds a null character");
    }
    const std::string terminated(expression);
    const MemoryWatch memory;
    const DocTypeHidden hidden(node->doc);
    const Context context(xmlXPathNewContext(node->doc));
    if (!context) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    context->node = node;
    context->error = ignoreError;
    const Result result(xmlXPathEvalExpression(reinterpret_cast<const xmlChar*>(terminated.c_str()), context.get()));
    memory.check();
    if (!result) {
        raise(context->lastError, expression);
    }
    if (result->type != XPATH_NODESET) {
        throw base::RuntimeError(base::error::kUnspecified,
                                 "The expression does not select nodes: " + std::string(expression));
    }
    std::vector<xmlNode*> nodes;
    if (const xmlNodeSet* set = result->nodesetval) {
        nodes.reserve(static_cast<std::size_t>(set->nodeNr));
        for (int i = 0; i < set->nodeNr; ++i) {
            if (set->nodeTab[i]->type != XML_NAMESPACE_DECL) { // a copy that dies with the result
                nodes.push_back(set->nodeTab[i]);
            }
        }
    }
    return nodes;
}

} // namespace xml
