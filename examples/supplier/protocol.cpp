#include "protocol.h"

namespace supplier {
namespace {

xml::XmlNode addRoot(xml::XmlDocument& document, std::string_view name) {
    return document.node().appendChild(document.createElement(name));
}

std::string onlyChild(std::string_view root, std::string_view child, std::string_view text) {
    xml::XmlDocument document;
    addRoot(document, root).appendChild(document.createElement(child)).setText(text);
    return document.xml();
}

} // namespace

Request::Request(std::string_view body) {
    // A declaration could only be there to do harm: clients never send one.
    if (!m_document.load(body, xml::DocTypePolicy::Refuse)) {
        m_wrong = "The request is no XML: " + m_document.parseError();
        return;
    }
    m_commands = m_document.documentElement();
    const xml::XmlNodeList commands = m_document.selectNodes("/commands/command");
    if (commands.size() != 1) {
        m_wrong = "The request does not hold exactly one command.";
        return;
    }
    m_command = commands[0];
}

xml::XmlNode Request::payload(std::string_view name) const {
    for (const xml::XmlNode& child : m_command.childNodes()) {
        if (child.nodeName() == name) {
            return child;
        }
    }
    return {};
}

Results::Results(std::string_view command) {
    m_command = addRoot(m_document, "results").appendChild(m_document.createElement("command"));
    m_command.setAttribute("name", command);
    m_command.setAttribute("redo", "false");
}

void Results::addContentOf(const xml::XmlNode& element) {
    for (const xml::Attribute& attribute : element.attributes()) {
        if (attribute.name != "command") {
            m_command.setAttribute(attribute.name, attribute.value);
        }
    }
    for (const xml::XmlNode& child : element.childNodes()) {
        m_command.appendChild(child);
    }
}

std::string refusal(std::string_view text) {
    xml::XmlDocument document;
    addRoot(document, "results").setAttribute("error", text);
    return document.xml();
}

std::string commandError(std::string_view text) {
    return onlyChild("results", "error", text);
}

std::string systemDown(std::string_view message) {
    if (!message.empty()) {
        return onlyChild("SYSDOWN", "message", message);
    }
    // The end tag is written out: clients look for it to see that nothing was cut off.
    return "<SYSDOWN></SYSDOWN>";
}

} // namespace supplier
