// Fetches an upgrade: all files that the answer names, into a folder of the new version's own.
#pragma once

#include "exchange/services.h"
#include "host/host_globals.h"
#include "xml/xml_document.h"

#include <string>

namespace sendreceive {
class ucSendReceive;
}

namespace exchange {

struct ListedFile;

// The answer's upgrade command: "firstdownload100", else "upgrade100". No node without one.
[[nodiscard]] xml::XmlNode findUpgrade(const xml::XmlDocument& results);

class Upgrade {
public:
    // None is owned.
    Upgrade(sendreceive::ucSendReceive& control, const Services& services);

    // `workingFolder`, with its final backslash, gets the files in "upgrade\upgrade<version>\" and the answer as
    // "upgrade.xml". True when the last file was fetched; without an upgrade command or without files, false. Raises
    // what making a folder and writing the answer raise.
    [[nodiscard]] bool download(const xml::XmlDocument& results, const std::string& workingFolder);

private:
    [[nodiscard]] bool fetch(const ListedFile& file, const std::string& target);
    void makeFolder(const std::string& folder);

    sendreceive::ucSendReceive& m_control;
    const Services& m_services;
    host::HostGlobals m_host;
};

} // namespace exchange
