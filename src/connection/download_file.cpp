#include "connection/download_file.h"

#include "base/resume_next.h"

#include <cstddef>
#include <utility>

namespace connection {
namespace {

constexpr std::size_t kBlock = 256 * 1024; // bytes written at a time

void removeIfThere(ports::FileSystem& fileSystem, const std::string& path) {
    if (fileSystem.fileExists(path)) {
        fileSystem.removeFile(path);
    }
}

} // namespace

DownloadFile::DownloadFile(ports::FileSystem& fileSystem, std::string target, std::string url, WhenBroken whenBroken)
    : m_fileSystem(fileSystem),
      m_target(std::move(target)),
      m_part(m_target + ".part"),
      m_info(m_part + ".info"),
      m_url(std::move(url)),
      m_whenBroken(whenBroken) {
    if (m_whenBroken == WhenBroken::Discard || !m_fileSystem.fileExists(m_info) || !m_fileSystem.fileExists(m_part)) {
        return;
    }
    base::resumeNext([&] { // unreadable: as if it were not there
        const auto known = PartialDownload::fromText(m_fileSystem.readFile(m_info));
        const auto have = static_cast<std::int64_t>(m_fileSystem.fileSize(m_part));
        if (known && known->url == m_url && have > 0 && have < known->total) {
            m_known = known;
            m_have = have;
        }
    });
}

DownloadFile::~DownloadFile() {
    discard();
}

std::vector<ports::HttpHeader> DownloadFile::requestHeaders() const {
    return m_known ? m_known->requestHeaders(m_have) : std::vector<ports::HttpHeader>();
}

bool DownloadFile::refusesRest(const FileAnswer& answer) const {
    return m_known && m_known->isRefused(answer, m_have);
}

void DownloadFile::removePart() {
    m_known.reset();
    m_have = 0;
    removeIfThere(m_fileSystem, m_info);
    removeIfThere(m_fileSystem, m_part);
}

void DownloadFile::begin(const FileAnswer& answer) {
    m_begun = true;
    m_length = answer.fileLength();
    if (m_known && m_known->isRest(answer, m_have)) {
        m_written = m_have;
        return;
    }
    removePart(); // left behind, perhaps when the program was ended
    if (m_whenBroken == WhenBroken::Resume) {
        m_known = PartialDownload::of(m_url, answer);
        if (m_known) {
            m_fileSystem.replaceFile(m_info, m_known->text());
        }
    }
}

void DownloadFile::write(std::string_view bytes) {
    m_written += static_cast<std::int64_t>(bytes.size());
    m_buffer += bytes;
    if (m_buffer.size() >= kBlock) {
        flush();
    }
}

void DownloadFile::flush() {
    if (!m_buffer.empty()) {
        m_fileSystem.appendFile(m_part, m_buffer);
        m_buffer.clear();
    }
}

void DownloadFile::keep() {
    flush();
    if (m_begun && m_written > 0) {
        m_fileSystem.moveOver(m_part, m_target);
        m_begun = false;
        base::resumeNext([&] { removeIfThere(m_fileSystem, m_info); }); // without its part it says nothing
    }
}

void DownloadFile::leave() {
    if (m_begun && m_known) {
        flush();
        m_begun = false;
    }
}

void DownloadFile::discard() noexcept {
    if (std::exchange(m_begun, false)) {
        base::quietly([&] { removePart(); }); // what stays is removed by the next download under this name
    }
}

} // namespace connection
