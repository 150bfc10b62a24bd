// The index answers as the expressions do, for any document and any order of additions, removals and searches.
// An input is a document, then operations, each ended by a line feed: "+code|file" adds, "-code|file" removes.
#include "fakes/fake_code_page.h"
#include "fakes/one_file.h"
#include "images/link_searches.h"

#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

std::string_view takeUntil(std::string_view& text, char end) {
    const std::size_t length = std::min(text.find(end), text.size());
    const std::string_view taken = text.substr(0, length);
    text.remove_prefix(std::min(length + 1, text.size()));
    return taken;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    std::string_view input(reinterpret_cast<const char*>(data), size);
    fakes::OneFile file(std::string(takeUntil(input, '\n')));
    fakes::NoClock clock;
    fakes::FakeCodePage ansi;
    const auto kind = size % 2 == 0 ? images::LinkKind::Images : images::LinkKind::Specifications;
    images::LinkDocument links(kind, file, clock, ansi);
    links.open("");
    // What the library writes of a document type is not always what it reads; the layer's own test covers those.
    if (links.xml().find("<!DOCTYPE") != std::string::npos) {
        return 0;
    }
    for (int step = 0; !input.empty() && step < 32; ++step) {
        std::string_view operation = takeUntil(input, '\n');
        const bool adds = operation.starts_with('+');
        operation.remove_prefix(operation.empty() ? 0 : 1);
        const std::string code(takeUntil(operation, '|'));
        const std::string name(operation);
        if (!link_searches::difference(links, kind, code, name).empty()) {
            std::abort();
        }
        try {
            if (adds) {
                links.add(code, name);
            } else {
                links.remove(links.findLinkAnywhere(code, name));
            }
        } catch (const base::RuntimeError&) { // a foreign root, an invalid expression, a forbidden character
        }
    }
    return 0;
}
