// What the window's commands carry to the server, and what changes here once the server has it.
#include "sendreceive_form/frmQVI_sendreceive.h"

#include "base/resume_next.h"
#include "base/runtime_error.h"

#include <string_view>

namespace sendreceive {
namespace {

constexpr std::string_view kLinks = "images.xml";
constexpr std::string_view kMark = "f3"; // "created", "deleted"; none: nothing has changed

[[noreturn]] void raiseParseError(const xml::XmlDocument& document) {
    throw base::RuntimeError(base::error::kUnspecified, document.parseError());
}

void removeAll(std::string& text, std::string_view part) {
    std::string kept;
    kept.reserve(text.size());
    std::size_t from = 0;
    for (std::size_t at = 0; (at = text.find(part, from)) != std::string::npos; from = at + part.size()) {
        kept.append(text, from, at - from);
    }
    text = kept.append(text, from);
}

// The request's text up to where the payload of its command, its only empty element, belongs.
std::string openCommand(const xml::XmlDocument& request) {
    std::string text = request.xml();
    for (std::size_t at = 0; (at = text.find("/>", at)) != std::string::npos;) {
        text.erase(at, 1);
    }
    removeAll(text, "</commands>");
    return text;
}

void closeCommand(xml::XmlDocument& request, std::string text) {
    text += "</command></commands>";
    if (!request.loadXml(text)) {
        raiseParseError(request);
    }
}

// A declaration is allowed at a document's beginning only: inside the request there is none.
std::string withoutDeclaration(const xml::XmlDocument& document) {
    const std::string text = document.xml();
    return text.starts_with("<?xml ") ? text.substr(text.find("?>") + 2) : text;
}

// What stands directly in the element, without that of the elements inside.
std::string ownText(const xml::XmlNode& element) {
    std::string text;
    for (const xml::XmlNode& child : element.childNodes()) {
        if (child.type() == xml::NodeType::Text || child.type() == xml::NodeType::CData) {
            text += child.text();
        }
    }
    return text;
}

} // namespace

xml::XmlDocument frmQVI_sendreceive::loadFile(const std::string& name) {
    xml::XmlDocument document;
    if (!document.load(m_services.engine.fileSystem.readFile(m_values.gQuorVantisPath + name))) {
        raiseParseError(document);
    }
    return document;
}

void frmQVI_sendreceive::AppendImagestoCommand(xml::XmlDocument& request) {
    const xml::XmlDocument links = loadFile(std::string(kLinks));
    const xml::XmlNode source = links.selectSingleNode("//images");
    xml::XmlNode command = request.selectSingleNode("//command");
    if (!source || !command) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    RecurseNodes(source, command.appendChild(request.createElement("images")), request);
}

void frmQVI_sendreceive::RecurseNodes(const xml::XmlNode& source, xml::XmlNode target, xml::XmlDocument& request) {
    for (const xml::Attribute& attribute : source.attributes()) {
        target.setAttribute(attribute.name, attribute.value);
    }
    if (const std::string text = ownText(source); !text.empty()) {
        target.setText(text);
    }
    for (const xml::XmlNode& child : source.childNodes()) {
        if (child.type() == xml::NodeType::Element && !child.getAttribute(kMark).empty()) {
            RecurseNodes(child, target.appendChild(request.createElement(child.nodeName())), request);
        }
    }
}

void frmQVI_sendreceive::AppendAllImagestoCommand(xml::XmlDocument& request) {
    std::string text = openCommand(request) + withoutDeclaration(loadFile(std::string(kLinks)));
    removeAll(text, R"(<?xml version="1.0" standalone="yes"?>)");
    closeCommand(request, std::move(text));
}

void frmQVI_sendreceive::AppendProductsGroupstoCommand(xml::XmlDocument& request) {
    const xml::XmlDocument file = loadFile("productgroups.xml");
    const xml::XmlNode groups = file.selectSingleNode("//productgroups");
    if (!groups) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    closeCommand(request, openCommand(request) + groups.xml());
}

void frmQVI_sendreceive::gotsendimagelinks210() {
    const xml::XmlDocument links = loadFile(std::string(kLinks));
    for (xml::XmlNode link : links.selectNodes("//p")) {
        const std::string mark = link.getAttribute(kMark);
        if (mark == "deleted") {
            link.parentNode().removeChild(link);
        }
        if (!mark.empty()) {
            link.removeAttribute(kMark);
        }
    }
    m_services.engine.fileSystem.replaceFile(m_values.gQuorVantisPath + std::string(kLinks), links.xml());
    base::resumeNext([&] { m_services.engine.settings.remove("QuorVantis", "Main", "ImageModify"); });
}

} // namespace sendreceive
