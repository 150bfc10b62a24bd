// A file that is being fetched: its bytes wait beside it, under a name of their own, until all of them are there.
#pragma once

#include "ports/file_system.h"

#include <string>
#include <string_view>

namespace connection {

class DownloadFile {
public:
    // Nothing is touched before the first write().
    DownloadFile(ports::FileSystem& fileSystem, std::string target);
    DownloadFile(const DownloadFile&) = delete;
    DownloadFile& operator=(const DownloadFile&) = delete;
    // What was not kept is thrown away: `target` is as it was.
    ~DownloadFile();

    // Raises what ports::FileSystem::appendFile does.
    void write(std::string_view bytes);
    // Puts what was written in the place of `target`. Without a byte `target` stays as it was. Raises what appendFile
    // and moveOver do.
    void keep();

private:
    void flush();
    void discard() noexcept;

    ports::FileSystem& m_fileSystem;
    std::string m_target;
    std::string m_part;   // its name until then
    std::string m_buffer; // small blocks are written together
    bool m_begun = false;
};

} // namespace connection
