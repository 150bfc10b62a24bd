// The request document as it goes out, and as the trace may show it. Both begin with the document's text, which is
// taken once: a request can hold all links of a shop.
#pragma once

#include "xml/xml_document.h"

#include <string>

namespace exchange {

// What is posted. The command document names the return command "Ret_sendorders", the wire "sendorders".
[[nodiscard]] std::string postedText(std::string text);

// For the trace, a file that users mail to their supplier: the passwords read "***". `text` is that of `request`.
[[nodiscard]] std::string loggedText(const xml::XmlDocument& request, std::string text);

} // namespace exchange
