// Saves one document for ever, each time with other content, for kill_during_saves.py to kill in the act:
// saver FILE FIRST-NUMBER. Document n is "<n>", a run of one letter and "<n>" again, about a megabyte, so that anything
// but a whole document is noticed. With FILE alone it waits until that file is no longer empty and ends.
#ifdef _WIN32
#include "windows/adapters/windows_file_system.h"
#else
#include "adapters/posix/posix_file_system.h"
#endif

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>
#include <thread>

namespace {

std::string document(unsigned long n) {
    const std::string mark = "<" + std::to_string(n) + ">";
    return mark + std::string(1'000'000 + n % 1000, static_cast<char>('a' + n % 26)) + mark;
}

#ifdef _WIN32
windows::WindowsFileSystem fileSystem;
#else
adapters::PosixFileSystem fileSystem("/");
#endif

void waitUntilFilled(const std::string& path) {
    while (fileSystem.readFile(path).empty()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
}

void saveForEver(const std::string& path, unsigned long first) {
    for (unsigned long n = first;; ++n) {
        fileSystem.replaceFile(path, document(n));
    }
}

} // namespace

int main(int argc, char** argv) {
    try {
        if (argc == 2) {
            waitUntilFilled(argv[1]);
            return 0;
        }
        if (argc == 3) {
            saveForEver(argv[1], std::strtoul(argv[2], nullptr, 10));
        }
    } catch (const std::exception& e) {
        std::fprintf(stderr, "saver: %s\n", e.what());
    }
    return 1;
}
