#include "exchange/answer.h"

#include "base/text.h"
#include "connection/https_control.h"
#include "xml/code_page.h"

#include <cstddef>

namespace exchange {
namespace {

constexpr std::string_view kSystemOff = "The Quorvantis server has currently been turned off. Please try again later.";

std::string fromUtf16(std::string_view bytes, bool bigEndian) {
    std::u16string units;
    units.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        units += static_cast<char16_t>(bigEndian ? first << 8U | second : second << 8U | first);
    }
    return base::toUtf8(units);
}

// What stands in quotes or bare after `name` and "=", in upper case; "" when it is not there.
std::string parameter(std::string_view text, std::string_view name) {
    const std::string upper = base::upperCase(text);
    std::size_t at = upper.find(std::string(name) + "=");
    if (at == std::string::npos) {
        return "";
    }
    at = upper.find_first_not_of("\"' ", at + name.size() + 1);
    return at == std::string::npos ? "" : upper.substr(at, upper.find_first_of("\"' ;?", at) - at);
}

std::string declaredEncoding(std::string_view bytes, std::string_view contentType) {
    if (bytes.starts_with("<?xml")) {
        if (std::string name = parameter(bytes.substr(0, bytes.find("?>")), "ENCODING"); !name.empty()) {
            return name;
        }
    }
    return parameter(contentType, "CHARSET");
}

// The first element of that name, in any letter case, at any depth; a null node when there is none.
xml::XmlNode elementNamed(std::string_view name, const xml::XmlNode& parent) {
    for (const xml::XmlNode& child : parent.childNodes()) {
        if (child.type() != xml::NodeType::Element) {
            continue;
        }
        if (base::equalInUpperCase(child.nodeName(), name)) {
            return child;
        }
        if (const xml::XmlNode found = elementNamed(name, child)) {
            return found;
        }
    }
    return {};
}

} // namespace

std::string answerText(std::string_view bytes, std::string_view contentType, ports::CodePage& ansi) {
    using namespace std::string_view_literals;
    if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv)) {
        return fromUtf16(bytes.substr(2), bytes[0] == '\xFE');
    }
    if (bytes.starts_with("\xEF\xBB\xBF"sv)) {
        return std::string(bytes.substr(3));
    }
    const std::string encoding = declaredEncoding(bytes, contentType);
    for (const std::string_view western : {"ISO-8859-1", "WINDOWS-1252", "LATIN1"}) {
        if (encoding == western) {
            return xml::fromWindows1252(bytes); // as browsers read the former, too
        }
    }
    return base::isValidUtf8(bytes) ? std::string(bytes) : ansi.decode(bytes);
}

std::optional<SystemDown> systemDown(std::string_view text) {
    if (!base::containsIgnoringCase(text, connection::kSystemDown)) {
        return std::nullopt;
    }
    if (!base::containsIgnoringCase(text, "</SYSDOWN>")) {
        return SystemDown{std::string(kSystemOff), "Not all XML received back"};
    }
    xml::XmlDocument document;
    if (document.loadXml(text, xml::DocTypePolicy::Refuse)) {
        const xml::XmlNode named = elementNamed("message", document.node());
        const xml::XmlNode element = named ? named : elementNamed("SYSDOWN", document.node());
        const std::string message(base::trim(element.text()));
        if (!message.empty()) {
            return SystemDown{message, message};
        }
    }
    return SystemDown{std::string(kSystemOff), "Message not set"};
}

std::optional<std::string> errorIn(const xml::XmlDocument& results) {
    const xml::XmlNode root = results.documentElement();
    if (std::string error = root.getAttribute("error"); !error.empty()) {
        return error;
    }
    if (const xml::XmlNode first = firstElement(root); first && first.nodeName() == "error") {
        return first.text();
    }
    return std::nullopt;
}

bool isWebPage(const xml::XmlDocument& results) {
    const std::string root = results.documentElement().nodeName();
    return base::equalInUpperCase(root.substr(root.find(':') + 1), "html");
}

xml::XmlNode firstElement(const xml::XmlNode& parent) {
    for (const xml::XmlNode& child : parent.childNodes()) {
        if (child.type() == xml::NodeType::Element) {
            return child;
        }
    }
    return {};
}

} // namespace exchange
