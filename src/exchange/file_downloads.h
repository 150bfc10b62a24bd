// The file-download pass: fetches the files that an answer names, unpacks cabinets, and puts each file where it
// belongs.
#pragma once

#include "exchange/context.h"
#include "exchange/listed_file.h"
#include "host/host_globals.h"
#include "xml/xml_document.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace exchange {

class FileDownloads {
public:
    // `dataFolder` with its final backslash.
    FileDownloads(const Context& context, const std::string& dataFolder, bool force);
    FileDownloads(const FileDownloads&) = delete;
    FileDownloads& operator=(const FileDownloads&) = delete;
    // What was fetched and is not needed any more is removed; what broke off stays, for the next time.
    ~FileDownloads();

    // True when every file that is needed here is in its place. What goes wrong with one is reported, and ends that one
    // only; a Cancel ends the pass.
    [[nodiscard]] bool run(const xml::XmlDocument& results);

private:
    // A file that has arrived and is not in its place yet.
    struct Arrived {
        std::string path;
        std::optional<std::int64_t> announcedLength;
    };

    [[nodiscard]] bool handle(const ListedFile& file);
    [[nodiscard]] std::string folderFor(Destination destination) const; // "": there is none
    [[nodiscard]] bool needed(const ListedFile& file, const std::string& target) const;
    [[nodiscard]] std::optional<Arrived> fetch(const ListedFile& file);
    [[nodiscard]] bool unpack(const ListedFile& file, const Arrived& cabinet, const std::string& folder);
    [[nodiscard]] bool take(const ListedFile& file, const Arrived& arrived, const std::string& target);
    [[nodiscard]] bool place(const std::string& from, const std::string& target);
    [[nodiscard]] bool copy(const std::string& from, const std::string& target);
    void couldNotPlace(const std::string& target);
    void log(const std::string& text);

    Context m_context;
    host::HostGlobals m_host;
    std::string m_dataFolder;
    std::string m_incoming; // where files wait until they are whole and checked
    bool m_force;
    std::map<std::string, Arrived> m_arrived; // by their addresses: several files may come in one cabinet
};

} // namespace exchange
