// The user's Internet options, which WinInet goes by where a request names no proxy.
#pragma once

#include <string>

namespace peers {

// Takes the proxies out of the environment, also for programs started from here: Wine's WinInet, unlike Windows', takes
// them for the user's options.
void forgetProxyVariables();

// The proxy of the options, "HOST:PORT"; "": none.
void setSystemProxy(const std::string& proxy);

} // namespace peers
