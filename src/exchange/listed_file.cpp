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

} // namespace exchange
