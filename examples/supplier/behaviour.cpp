#include "behaviour.h"

#include "base/runtime_error.h"

#include <algorithm>
#include <charconv>

namespace supplier {
namespace {

// 0 for whatever is no number.
int numberOf(const std::string& text) {
    int number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return std::max(number, 0);
}

} // namespace

Behaviour::Behaviour(const DataFolder& folder) {
    const auto bytes = folder.read("behaviour.xml");
    if (bytes && !m_document.load(*bytes)) {
        throw base::RuntimeError(base::error::kUnspecified, "behaviour.xml: " + m_document.parseError());
    }
}

std::chrono::milliseconds Behaviour::wait() const {
    return std::chrono::milliseconds(numberOf(find("wait", {}).getAttribute("milliseconds")));
}

std::string Behaviour::errorFor(std::string_view command) const {
    return find("fail", command).getAttribute("error");
}

int Behaviour::repetitionsOf(std::string_view command) const {
    return numberOf(find("redo", command).getAttribute("times"));
}

std::optional<std::size_t> Behaviour::cutOf(std::string_view file) const {
    const xml::XmlNode cut = find("cut", file, "file");
    return cut ? std::optional(static_cast<std::size_t>(numberOf(cut.getAttribute("after")))) : std::nullopt;
}

xml::XmlNode Behaviour::find(std::string_view element, std::string_view value, std::string_view attribute) const {
    for (const xml::XmlNode& child : m_document.documentElement().childNodes()) {
        if (child.nodeName() == element && child.getAttribute(attribute) == value) {
            return child;
        }
    }
    return {};
}

} // namespace supplier
