// The request document as it goes out, and as the trace may show it.
#pragma once

#include "xml/xml_document.h"

#include <string>

namespace sendreceive {

// What is posted. The command document names the return command "Ret_sendorders", the wire "sendorders".
[[nodiscard]] std::string postedText(const xml::XmlDocument& request);

// For the trace, a file that users mail to their supplier: the passwords read "***".
[[nodiscard]] std::string loggedText(const xml::XmlDocument& request);

} // namespace sendreceive
