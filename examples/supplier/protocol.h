// The documents of the wire: one command in, one results document out.
#pragma once

#include "xml/xml_document.h"

#include <string>
#include <string_view>

namespace supplier {

// <commands profile="..." password="..." newpassword="..."><command name="..."
// lastdate="...">payload</command></commands>
class Request {
public:
    // `body` as it came. wrong() says what is the matter with it, "" when it is a request.
    explicit Request(std::string_view body);

    [[nodiscard]] const std::string& wrong() const noexcept { return m_wrong; }
    [[nodiscard]] std::string profile() const { return m_commands.getAttribute("profile"); }
    [[nodiscard]] std::string password() const { return m_commands.getAttribute("password"); }
    // "" when it stays as it is.
    [[nodiscard]] std::string newPassword() const { return m_commands.getAttribute("newpassword"); }
    [[nodiscard]] std::string command() const { return m_command.getAttribute("name"); }
    [[nodiscard]] std::string lastDate() const { return m_command.getAttribute("lastdate"); }
    // The element that the command brings along; no node without one.
    [[nodiscard]] xml::XmlNode payload(std::string_view name) const;

private:
    xml::XmlDocument m_document;
    xml::XmlNode m_commands;
    xml::XmlNode m_command;
    std::string m_wrong;
};

// <results><command name="..." redo="true|false">what the command brought about</command></results>
class Results {
public:
    explicit Results(std::string_view command);

    void askToRepeat() { m_command.setAttribute("redo", "true"); }
    // An element below the command's.
    xml::XmlNode add(std::string_view element) { return m_command.appendChild(m_document.createElement(element)); }
    // Copies of what an element of another document has and holds, all but its attribute "command".
    void addContentOf(const xml::XmlNode& element);
    [[nodiscard]] std::string xml() const { return m_document.xml(); }

private:
    xml::XmlDocument m_document;
    xml::XmlNode m_command;
};

// Refuses the whole request: <results error="..."/>.
[[nodiscard]] std::string refusal(std::string_view text);

// Refuses the command: <results><error>...</error></results>.
[[nodiscard]] std::string commandError(std::string_view text);

// The service is switched off: <SYSDOWN><message>...</message></SYSDOWN>, <SYSDOWN/> without a message.
[[nodiscard]] std::string systemDown(std::string_view message);

} // namespace supplier
