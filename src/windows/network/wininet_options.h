// A request of the port as WinInet's options and header lines.
#pragma once

#include "ports/https.h"
#include "windows/network/wininet_handles.h"

#include <string>

namespace windows {

// Why WinInet is not to be asked at all: a port of a proxy that is none, a line break in a header. "" when it is.
[[nodiscard]] std::string wininetRequestFault(const ports::HttpRequest& request);

// Asynchronous; through the proxy of the settings, or by the system's Internet options. Empty when WinInet fails.
[[nodiscard]] UniqueInternet openWinInetSession(const ports::HttpRequest& request);

// Of a request's handle. `secure`: over https, where the login at the proxy is given to the tunnel.
void setWinInetOptions(HINTERNET call, const ports::HttpRequest& request, bool secure);

// The request's header lines and the transport's, each with CR LF. `withLogin`: that at the server too.
[[nodiscard]] std::string wininetHeaderLines(const ports::HttpRequest& request, bool secure, bool withLogin);

} // namespace windows
