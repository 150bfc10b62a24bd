#include "sendreceive/request_text.h"

#include <cstddef>
#include <string_view>

namespace sendreceive {
namespace {

constexpr std::string_view kReturnPrefix = "Ret_";
constexpr std::string_view kReturnCommand = "Ret_sendorders";

} // namespace

std::string postedText(const xml::XmlDocument& request) {
    std::string text = request.xml();
    for (std::size_t at = 0; (at = text.find(kReturnCommand, at)) != std::string::npos;) {
        text.erase(at, kReturnPrefix.size());
    }
    return text;
}

std::string loggedText(const xml::XmlDocument& request) {
    xml::XmlDocument copy;
    if (!copy.loadXml(request.xml())) {
        return ""; // without a root: there is nothing to show
    }
    const xml::XmlNode root = copy.documentElement();
    for (const std::string_view attribute : {"password", "newpassword"}) {
        if (root.hasAttribute(attribute)) {
            copy.documentElement().setAttribute(attribute, "***");
        }
    }
    return copy.xml();
}

} // namespace sendreceive
