// Turns bytes into a tree, with the options that every document of the system is read with.
#pragma once

#include "xml/xml_document.h"

#include <memory>
#include <string>
#include <string_view>

namespace xml {

struct Parsed {
    std::unique_ptr<Tree> tree; // empty when the source is no well-formed document
    std::string error;          // then: why, and where
};

// `isText`: the source is UTF-8 whatever its declaration says. Raises 7.
[[nodiscard]] Parsed parse(std::string_view source, bool isText, DocTypePolicy policy);

} // namespace xml
