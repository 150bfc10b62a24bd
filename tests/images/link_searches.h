// The model of the link document's searches: the XPath expressions themselves, on a second copy of the document.
#pragma once

#include "base/runtime_error.h"
#include "images/link_document.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace link_searches {

using Outcome = std::optional<std::vector<std::string>>; // nothing: the expression is invalid

template <typename Search>
Outcome outcome(Search&& search) {
    try {
        return search();
    } catch (const base::RuntimeError& e) {
        if (e.number() != base::error::kUnspecified) {
            throw;
        }
        return std::nullopt;
    }
}

inline std::vector<std::string> identity(const images::Link& link) {
    return link ? std::vector<std::string>{link.code(), link.file(), link.status(), link.description()}
                : std::vector<std::string>{};
}

inline std::vector<std::string> identity(const xml::XmlNode& node) {
    return node ? std::vector<std::string>{node.getAttribute("f1"), node.getAttribute("f2"), node.getAttribute("f3"),
                                           node.getAttribute("f4")}
                : std::vector<std::string>{};
}

inline std::vector<std::string> listed(const xml::XmlNodeList& nodes) {
    std::vector<std::string> files;
    for (const xml::XmlNode& node : nodes) {
        if (node.getAttribute("f3") != "deleted") {
            files.push_back(node.getAttribute("f2"));
        }
    }
    return files;
}

// The name of a search that answers otherwise than its expression; "" when all agree.
inline std::string difference(const images::LinkDocument& links, images::LinkKind kind, const std::string& code,
                              const std::string& file) {
    xml::XmlDocument model;
    const std::string text = links.xml();
    if (!model.loadXml(text) && !model.loadXml(text + "<nothing/>")) { // a removed root leaves no document to load
        return "loading what was written: " + model.parseError();
    }
    const std::string one = "p[@f1='" + code + "']";
    const std::string both = "p[@f1='" + code + "' and @f2='" + file + "']";
    const std::string root = kind == images::LinkKind::Images ? "images/" : "rtf/";
    if (outcome([&] { return identity(links.findLink(code, file)); }) !=
        outcome([&] { return identity(model.selectSingleNode("images/" + both)); })) {
        return "findLink";
    }
    if (outcome([&] { return identity(links.findLinkAnywhere(code, file)); }) !=
        outcome([&] { return identity(model.selectSingleNode("//" + both)); })) {
        return "findLinkAnywhere";
    }
    if (outcome([&] { return links.linkedFiles(code); }) !=
        outcome([&] { return listed(model.selectNodes(root + one)); })) {
        return "linkedFiles";
    }
    return {};
}

} // namespace link_searches
