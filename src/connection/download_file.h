// A file that is being fetched: its bytes wait beside it, under a name of their own, until all of them are there.
#pragma once

#include "connection/partial_download.h"
#include "ports/file_system.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace connection {

// "TARGET.part" holds the bytes. Where a broken download may go on another time, "TARGET.part.info" says of what they
// are the beginning.
class DownloadFile {
public:
    enum class WhenBroken : std::uint8_t { Discard, Resume };

    // Nothing is touched before begin().
    DownloadFile(ports::FileSystem& fileSystem, std::string target, std::string url, WhenBroken whenBroken);
    DownloadFile(const DownloadFile&) = delete;
    DownloadFile& operator=(const DownloadFile&) = delete;
    // What was neither kept nor left is thrown away: `target` is as it was.
    ~DownloadFile();

    // What the request says beside its address: nothing, or which part of the file is still wanted.
    [[nodiscard]] std::vector<ports::HttpHeader> requestHeaders() const;
    // The server does not give the rest that requestHeaders() wanted: the file is to be asked for anew, after
    // removePart().
    [[nodiscard]] bool refusesRest(const FileAnswer& answer) const;
    void removePart();

    // The body of a good answer is about to come. Raises what ports::FileSystem::appendFile does, as write() does.
    void begin(const FileAnswer& answer);
    void write(std::string_view bytes);
    // The bytes that came are as many as the answer announced, if it did.
    [[nodiscard]] bool complete() const noexcept { return !m_length || *m_length == m_written; }
    // Puts what was written in the place of `target`. Without a byte `target` stays as it was. Raises what appendFile
    // and moveOver do.
    void keep();
    // Leaves what was written for another time, where that is possible.
    void leave();

private:
    void flush();
    void discard() noexcept;

    ports::FileSystem& m_fileSystem;
    std::string m_target;
    std::string m_part; // its name until then
    std::string m_info;
    std::string m_url;
    WhenBroken m_whenBroken;
    std::optional<PartialDownload> m_known; // of the part that an earlier download left; then of this one
    std::int64_t m_have = 0;                // bytes of that part
    std::string m_buffer;                   // small blocks are written together
    std::int64_t m_written = 0;             // bytes of the file, those of an earlier download among them
    std::optional<std::int64_t> m_length;   // announced
    bool m_begun = false;
};

} // namespace connection
