#include "connection/download_file.h"

#include "base/resume_next.h"

#include <cstddef>
#include <utility>

namespace connection {
namespace {

constexpr std::size_t kBlock = 256 * 1024; // bytes written at a time

} // namespace

DownloadFile::DownloadFile(ports::FileSystem& fileSystem, std::string target)
    : m_fileSystem(fileSystem), m_target(std::move(target)), m_part(m_target + ".part") {}

DownloadFile::~DownloadFile() {
    discard();
}

void DownloadFile::write(std::string_view bytes) {
    m_buffer += bytes;
    if (m_buffer.size() >= kBlock) {
        flush();
    }
}

void DownloadFile::flush() {
    if (m_buffer.empty()) {
        return;
    }
    if (!std::exchange(m_begun, true) && m_fileSystem.fileExists(m_part)) {
        m_fileSystem.removeFile(m_part); // left behind when the program was ended
    }
    m_fileSystem.appendFile(m_part, m_buffer);
    m_buffer.clear();
}

void DownloadFile::keep() {
    flush();
    if (m_begun) {
        m_fileSystem.moveOver(m_part, m_target);
        m_begun = false;
    }
}

void DownloadFile::discard() noexcept {
    if (std::exchange(m_begun, false)) {
        try {
            base::resumeNext([&] { m_fileSystem.removeFile(m_part); });
        } catch (...) { // nothing more can be done about it: the next download under this name removes it
        }
    }
}

} // namespace connection
