#include "connection/web_address.h"

#include "base/text.h"

#include <cstddef>

namespace connection {
namespace {

std::string_view schemeOf(std::string_view address) {
    const std::size_t colon = address.find(':');
    const std::size_t slash = address.find('/');
    return colon < slash ? address.substr(0, colon) : std::string_view{};
}

// Scheme and server, without the slash that ends them.
std::string_view serverOf(std::string_view address) {
    const std::size_t host = address.find("//");
    return address.substr(0, host == std::string_view::npos ? host : address.find('/', host + 2));
}

std::string folderOf(std::string_view address) {
    const std::string_view path = address.substr(0, address.find_first_of("?#"));
    const std::string_view server = serverOf(path);
    const std::size_t slash = path.rfind('/');
    return slash == std::string_view::npos || slash < server.size() ? std::string(server) + "/"
                                                                    : std::string(path.substr(0, slash + 1));
}

} // namespace

std::string withEncodedBlanks(std::string_view address) {
    std::string encoded;
    for (const char c : address) {
        c == ' ' ? encoded += "%20" : encoded += c;
    }
    return encoded;
}

std::string fileAddress(std::string_view serviceAddress, std::string_view webname) {
    if (const std::string scheme = base::upperCase(schemeOf(webname)); !scheme.empty()) {
        const bool allowed =
            scheme == "HTTPS" || (scheme == "HTTP" && base::upperCase(schemeOf(serviceAddress)) != "HTTPS");
        return allowed ? std::string(webname) : std::string();
    }
    if (webname.starts_with('/')) {
        return std::string(serverOf(serviceAddress)).append(webname);
    }
    return folderOf(serviceAddress).append(webname);
}

} // namespace connection
