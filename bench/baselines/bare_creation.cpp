#include "baselines/bare_creation.h"

#include <algorithm>
#include <array>

#ifdef _WIN32
#include <windows.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

std::array<char, 32'768> filler;

} // namespace

#ifdef _WIN32
bool baselines::createFile(const char* path, std::uint32_t size) {
    HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    bool done = file != INVALID_HANDLE_VALUE;
    while (done && size > 0) {
        DWORD written = 0;
        const DWORD piece = std::min<DWORD>(size, filler.size());
        done = WriteFile(file, filler.data(), piece, &written, nullptr) && written == piece;
        size -= piece;
    }
    return CloseHandle(file) && done;
}
#else
bool baselines::createFile(const char* path, std::uint32_t size) {
    const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    bool done = file >= 0;
    while (done && size > 0) {
        const auto piece = std::min<std::size_t>(size, filler.size());
        done = write(file, filler.data(), piece) == static_cast<ssize_t>(piece);
        size -= static_cast<std::uint32_t>(piece);
    }
    return close(file) == 0 && done;
}
#endif
