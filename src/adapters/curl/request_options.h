// A request of the port as libcurl's options.
#pragma once

#include "adapters/curl/curl_handles.h"
#include "ports/https.h"

#include <string>

namespace adapters {

// Why libcurl is not to be asked at all: a port of a proxy that is none, a line break in a header. "" when it is.
[[nodiscard]] std::string requestFault(const ports::HttpRequest& request);

// The request's own header lines and the transport's. Raises 7.
[[nodiscard]] List headerLines(const ports::HttpRequest& request);

// What libcurl answers to the first option that it does not take, CURLE_OK when it takes them all. `easy` is new;
// `headers` and the request's body are only pointed to and must live as long as the transfer.
[[nodiscard]] CURLcode setOptions(CURL* easy, const ports::HttpRequest& request, curl_slist* headers,
                                  const std::string& caFile);

} // namespace adapters
