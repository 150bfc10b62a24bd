// What the server's answer says, before anything is done with it.
#pragma once

#include "ports/code_page.h"
#include "xml/xml_document.h"

#include <optional>
#include <string>
#include <string_view>

namespace exchange {

// The answer's bytes as text: by its byte order mark, its XML declaration, or its Content-Type; else as UTF-8, and
// where they are none, in the user's code page.
[[nodiscard]] std::string answerText(std::string_view bytes, std::string_view contentType, ports::CodePage& ansi);

// The service is switched off.
struct SystemDown {
    std::string message; // for the user
    std::string note;    // for the trace: what came of the message
};

// None for any other answer.
[[nodiscard]] std::optional<SystemDown> systemDown(std::string_view text);

// The server refused: what it says of that, for the user; may be "". None when it did not. The root's attribute "error"
// counts when it is not empty, the root's first child element when it is named "error".
[[nodiscard]] std::optional<std::string> errorIn(const xml::XmlDocument& results);

// A well-formed page of a hotspot or a proxy in the server's place is no answer to a command.
[[nodiscard]] bool isWebPage(const xml::XmlDocument& results);

// The first element among the node's children; a null node when there is none.
[[nodiscard]] xml::XmlNode firstElement(const xml::XmlNode& parent);

} // namespace exchange
