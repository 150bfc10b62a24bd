#include "exchange/request_text.h"

#include <cstddef>
#include <string_view>

namespace exchange {
namespace {

constexpr std::string_view kReturnPrefix = "Ret_";
constexpr std::string_view kReturnCommand = "Ret_sendorders";
constexpr std::string_view kMask = "***";

// Where the document's root stands in its text, behind the declaration and whatever else comes first.
std::size_t placeOfRoot(const xml::XmlDocument& document, std::string_view text) {
    std::size_t at = text.starts_with("<?xml ") ? text.find("?>") + std::string_view("?>\n").size() : 0;
    for (const xml::XmlNode& child : document.childNodes()) {
        if (child.type() == xml::NodeType::Element) {
            return at;
        }
        at += child.xml().size() + std::string_view("\n").size();
    }
    return text.size();
}

bool isPassword(std::string_view upToValue) {
    return upToValue.ends_with(" password=") || upToValue.ends_with(" newpassword=");
}

} // namespace

std::string postedText(std::string text) {
    for (std::size_t at = 0; (at = text.find(kReturnCommand, at)) != std::string::npos;) {
        text.erase(at, kReturnPrefix.size());
    }
    return text;
}

// The text is changed, not the document: taking the text again would cost more than all the rest.
std::string loggedText(const xml::XmlDocument& request, std::string text) {
    std::size_t at = placeOfRoot(request, text);
    while ((at = text.find_first_of("\"'>", at)) != std::string::npos && text[at] != '>') {
        const std::size_t value = at + 1;
        const std::size_t end = text.find(text[at], value);
        if (isPassword(std::string_view(text).substr(0, at))) {
            text.replace(value, end - value, kMask);
            at = value + kMask.size() + 1;
        } else {
            at = end + 1;
        }
    }
    return text;
}

} // namespace exchange
