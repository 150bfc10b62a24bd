// The command document of the component's own send/receive window: which uploads this shop can run.
#pragma once

#include "xml/xml_document.h"

#include <string>
#include <string_view>

namespace ports {
class FileSystem;
class Settings;
} // namespace ports

namespace sendreceive {

// The commands' names as the server knows them; the different spelling of the second is its name too.
namespace command {
inline constexpr std::string_view kSendImageLinks = "sendimagelinks210";
inline constexpr std::string_view kSendAllImageLinks = "SendImageLinksAll210";
inline constexpr std::string_view kSendProductGroups = "sendproductgroups210";
inline constexpr std::string_view kGetAccount = "getaccount130"; // never offered here, but hosts' lists hold it
} // namespace command

// Root "commands" with the profile, and up to three commands: image-link changes when there are any, all image links,
// product groups. `dataFolder` ends in a backslash.
[[nodiscard]] xml::XmlDocument makeCommandDocument(ports::FileSystem& fileSystem, ports::Settings& settings,
                                                   const std::string& dataFolder, std::string_view profile);

} // namespace sendreceive
