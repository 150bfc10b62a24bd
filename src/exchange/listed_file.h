// A file that the server's answer names: what it is called here and there, and where it belongs.
#pragma once

#include "xml/xml_node.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace exchange {

// The attribute "destination", whatever its letter case; none means Files.
enum class Destination : std::uint8_t { Files, Database, Installed, Newsflash, System, Unknown };

struct ListedFile {
    std::string filename;    // its name in the destination; with backslashes when it is in a folder of that
    std::string webname;     // where the server has it
    std::string cabfilename; // the cabinet that it comes in; "" when it does not
    std::string version;     // as written; "" for none
    Destination destination = Destination::Files;

    // Of an element with the attributes of these names.
    [[nodiscard]] static ListedFile from(const xml::XmlNode& element);

    [[nodiscard]] bool inCabinet() const { return !cabfilename.empty(); }
    // Everything in its cabinet is meant.
    [[nodiscard]] bool isWholeCabinet() const;
};

} // namespace exchange
