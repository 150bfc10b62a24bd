// A failure that libcurl reports, as an outcome of the port.
#pragma once

#include "ports/https.h"

#include <curl/curl.h>

#include <string>

namespace adapters {

// `code` is not CURLE_OK.
[[nodiscard]] ports::HttpOutcome failed(CURLcode code, std::string description);

// One line of UTF-8, whatever the library and the system have put into the text.
[[nodiscard]] std::string oneLine(std::string text);

} // namespace adapters
