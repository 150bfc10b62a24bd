#include "exchange/listed_file.h"

#include "base/split_path.h"
#include "base/text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace exchange {
namespace {

constexpr std::array<std::pair<std::string_view, Destination>, 6> kDestinations{{{"", Destination::Files},
                                                                                 {"FILES", Destination::Files},
                                                                                 {"DATABASE", Destination::Database},
                                                                                 {"INSTALLED", Destination::Installed},
                                                                                 {"NEWSFLASH", Destination::Newsflash},
                                                                                 {"SYSTEM", Destination::System}}};

Destination toDestination(const std::string& text) {
    const std::string upper = base::upperCase(text);
    const auto* const found = std::ranges::find(kDestinations, upper, &std::pair<std::string_view, Destination>::first);
    return found == kDestinations.end() ? Destination::Unknown : found->second;
}

bool isCabinetName(std::string_view name) {
    constexpr std::string_view kEnding = ".CAB";
    return name.size() > kEnding.size() && base::upperCase(name.substr(name.size() - kEnding.size())) == kEnding;
}

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

// A name that ends in ".CAB" stands for what is in that cabinet, unless it is said to come in another one.
ListedFile ListedFile::from(const xml::XmlNode& element) {
    ListedFile file{element.getAttribute("filename"), element.getAttribute("webname"),
                    element.getAttribute("cabfilename"), element.getAttribute("version"),
                    toDestination(element.getAttribute("destination"))};
    if (file.cabfilename.empty() && isCabinetName(file.filename)) {
        file.cabfilename = file.filename;
    } else if (file.cabfilename.empty() && isCabinetName(file.webname)) {
        file.cabfilename = base::nameWithoutFolder(file.webname);
    }
    if (file.webname.empty()) {
        file.webname = file.inCabinet() ? file.cabfilename : file.filename;
    }
    std::ranges::replace(file.filename, '/', '\\');
    return file;
}

bool ListedFile::isWholeCabinet() const {
    return inCabinet() && (filename.empty() || base::equalInUpperCase(filename, cabfilename));
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

} // namespace exchange
