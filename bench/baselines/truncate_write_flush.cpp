#include "baselines/truncate_write_flush.h"

#ifdef _WIN32
#include <windows.h>

bool baselines::truncateWriteFlush(const char* path, const void* bytes, std::size_t size) {
    HANDLE file = CreateFileA(path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    DWORD written = 0;
    const bool done = file != INVALID_HANDLE_VALUE &&
                      WriteFile(file, bytes, static_cast<DWORD>(size), &written, nullptr) && written == size &&
                      FlushFileBuffers(file);
    return CloseHandle(file) && done;
}
#else
#include <fcntl.h>
#include <unistd.h>

bool baselines::truncateWriteFlush(const char* path, const void* bytes, std::size_t size) {
    const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC, 0666);
    const bool done = file >= 0 && write(file, bytes, size) == static_cast<ssize_t>(size) && fsync(file) == 0;
    return close(file) == 0 && done;
}
#endif
