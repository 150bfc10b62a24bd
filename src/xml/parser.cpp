#include "xml/parser.h"

#include "base/runtime_error.h"
#include "xml/library.h"
#include "xml/tree.h"

#include <algorithm>
#include <climits>
#include <libxml/SAX2.h>
#include <libxml/parser.h>
#include <libxml/parserInternals.h>

namespace xml {
namespace {

// XML_PARSE_HUGE stays out: without it the library bounds depth and entities, and files of hundreds of MB still load.
constexpr int kOptions =
    XML_PARSE_NONET | XML_PARSE_NOBLANKS | XML_PARSE_COMPACT | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;

struct LoadState {
    bool sawBlankText = false;
    bool refusedDocType = false;
};

LoadState& stateOf(void* context) noexcept {
    return *static_cast<LoadState*>(static_cast<xmlParserCtxt*>(context)->_private);
}

bool isBlank(const xmlChar* text, std::size_t length) noexcept {
    return std::all_of(text, text + length, [](xmlChar c) { return c == ' ' || c == '\n' || c == '\t' || c == '\r'; });
}

// The library drops white space by a guess and delivers the rest here. A text that is all blank consists of blank
// pieces, so the walk that removes such texts is needed only when one was seen.
void onCharacters(void* context, const xmlChar* text, int length) {
    if (length > 0 && text[0] <= ' ' && isBlank(text, static_cast<std::size_t>(length))) {
        stateOf(context).sawBlankText = true;
    }
    xmlSAX2Characters(context, text, length);
}

void refuseDocType(void* context, const xmlChar*, const xmlChar*, const xmlChar*) {
    stateOf(context).refusedDocType = true;
    xmlStopParser(static_cast<xmlParserCtxt*>(context));
}

void removeBlankTexts(xmlDoc* document) noexcept {
    auto* const top = reinterpret_cast<xmlNode*>(document);
    for (xmlNode* node = top; node != nullptr;) {
        xmlNode* const current = node;
        node = nextInside(node, top);
        if (current->type == XML_TEXT_NODE &&
            isBlank(current->content, static_cast<std::size_t>(xmlStrlen(current->content)))) {
            xmlUnlinkNode(current);
            xmlFreeNode(current);
        }
    }
}

void cutReference(xmlNode* node) noexcept {
    if (node->type == XML_ENTITY_REF_NODE) {
        node->content = nullptr; // both borrowed from the declaration
        node->children = nullptr;
        node->last = nullptr;
    }
}

// Cuts every entity reference from its declaration, so that no reader of values can follow it.
void cutReferences(xmlDoc* document) noexcept {
    auto* const top = reinterpret_cast<xmlNode*>(document);
    for (xmlNode* node = top; node != nullptr; node = nextInside(node, top)) {
        cutReference(node);
        if (node->type == XML_ELEMENT_NODE) {
            for (xmlAttr* attribute = node->properties; attribute != nullptr; attribute = attribute->next) {
                for (xmlNode* part = attribute->children; part != nullptr; part = part->next) {
                    cutReference(part);
                }
            }
        }
    }
}

std::string reasonOf(const xmlParserCtxt& context, const LoadState& state) {
    if (state.refusedDocType) {
        return "A document type declaration is not allowed.";
    }
    const xmlError& error = context.lastError;
    std::string reason = error.message != nullptr ? error.message : "The document is not well-formed.";
    while (!reason.empty() && (reason.back() == '\n' || reason.back() == ' ')) {
        reason.pop_back();
    }
    return reason + " (line " + std::to_string(error.line) + ", column " + std::to_string(error.int2) + ")";
}

struct FreeDocument {
    void operator()(xmlDoc* document) const noexcept { xmlFreeDoc(document); }
};

struct FreeContext {
    void operator()(xmlParserCtxt* context) const noexcept {
        if (context->myDoc != nullptr) {
            xmlFreeDoc(context->myDoc);
            context->myDoc = nullptr;
        }
        xmlFreeParserCtxt(context);
    }
};

} // namespace

Parsed parse(std::string_view source, bool isText, DocTypePolicy policy) {
    startLibrary();
    if (source.size() > static_cast<std::size_t>(INT_MAX)) {
        return {nullptr, "The document is too large."};
    }
    const std::unique_ptr<xmlParserCtxt, FreeContext> context(xmlNewParserCtxt());
    if (!context) {
        throw base::RuntimeError(base::error::kOutOfMemory);
    }
    const MemoryWatch memory;
    LoadState state;
    context->_private = &state;
    context->sax->characters = onCharacters;
    if (policy == DocTypePolicy::Refuse) {
        context->sax->internalSubset = refuseDocType;
    }
    const int options = isText ? kOptions | XML_PARSE_IGNORE_ENC : kOptions;
    std::unique_ptr<xmlDoc, FreeDocument> document(
        xmlCtxtReadMemory(context.get(), source.data(), static_cast<int>(source.size()), nullptr, nullptr, options));
    memory.check();
    if (!document || state.refusedDocType) {
        return {nullptr, reasonOf(*context, state)};
    }
    if (state.sawBlankText) {
        removeBlankTexts(document.get());
    }
    if (document->intSubset != nullptr) {
        cutReferences(document.get());
    }
    auto tree = std::make_unique<Tree>();
    tree->replace(document.release());
    return {std::move(tree), {}};
}

} // namespace xml
