// Fetches an upgrade: all files that the answer names, into a folder of the new version's own.
#pragma once

#include "exchange/context.h"
#include "xml/xml_document.h"

#include <string>

namespace exchange {

struct ListedFile;

// The answer's upgrade command: "firstdownload100", else "upgrade100". No node without one.
[[nodiscard]] xml::XmlNode findUpgrade(const xml::XmlDocument& results);

class Upgrade {
public:
    explicit Upgrade(const Context& context) : m_context(context) {}

    // `workingFolder`, with its final backslash, gets the files in "upgrade\upgrade<version>\" and the answer as
    // "upgrade.xml". True when the last file was fetched; without an upgrade command or without files, false. Raises
    // what making a folder and writing the answer raise.
    [[nodiscard]] bool download(const xml::XmlDocument& results, const std::string& workingFolder);

private:
    [[nodiscard]] bool fetch(const ListedFile& file, const std::string& target);

    Context m_context;
};

} // namespace exchange
