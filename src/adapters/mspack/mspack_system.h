// The files that libmspack reads and writes, with the reason why one could not be.
#pragma once

#include <cstdint>

#include <mspack.h>

namespace adapters {

// Paths are those of this machine. Must outlive the decompressor that is made with it.
class MspackSystem {
public:
    MspackSystem() noexcept;
    MspackSystem(const MspackSystem&) = delete;
    MspackSystem& operator=(const MspackSystem&) = delete;

    [[nodiscard]] mspack_system* table() noexcept { return &m_table; }

    // The Win32 error of the last open, read or write that failed; 0 when none did.
    [[nodiscard]] std::uint32_t lastError() const noexcept { return m_lastError; }

private:
    struct File;
    // What libmspack finds the object by: it hands its table back to `open`.
    struct Table : mspack_system {
        MspackSystem* owner;
    };

    static mspack_file* open(mspack_system* table, const char* path, int mode);
    static void close(mspack_file* file);
    static int read(mspack_file* file, void* buffer, int bytes);
    static int write(mspack_file* file, void* buffer, int bytes);
    static int seek(mspack_file* file, off_t offset, int origin);
    static off_t tell(mspack_file* file);

    Table m_table;
    std::uint32_t m_lastError = 0;
};

} // namespace adapters
