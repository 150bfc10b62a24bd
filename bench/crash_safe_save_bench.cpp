// What the crash-safe save costs beside a plain one: crash_safe_save_bench FOLDER [rounds]. Both save the same bytes in
// turn, so that a busy machine slows both; medians are compared. FOLDER is written with forward slashes.
#include "baselines/truncate_write_flush.h"
#include "measure.h"

#ifdef _WIN32
#include "windows/adapters/windows_file_system.h"
#else
#include "adapters/posix/posix_file_system.h"
#endif

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using bench::median;
using bench::seconds;

void compare(ports::FileSystem& files, const std::string& folder, std::size_t size, int rounds) {
    const std::string bytes(size, 'x');
    const std::string plainPath = folder + "/plain.xml";
    const std::string safePath = folder + "/safe.xml";
    std::vector<double> plain;
    std::vector<double> safe;
    for (int round = 0; round < rounds; ++round) {
        plain.push_back(seconds([&] {
            if (!baselines::truncateWriteFlush(plainPath.c_str(), bytes.data(), bytes.size())) {
                std::perror("plain save");
                std::exit(1);
            }
        }));
        safe.push_back(seconds([&] { files.replaceFile(safePath, bytes); }));
    }
    std::printf("%9zu bytes: truncate + write + flush %8.3f ms, crash-safe %8.3f ms, ratio %.2f\n", size,
                median(plain) * 1e3, median(safe) * 1e3, median(safe) / median(plain));
    std::remove(plainPath.c_str());
    files.removeFile(safePath);
}

} // namespace

int main(int argc, char** argv) {
    const std::string folder = argc > 1 ? argv[1] : ".";
    const int rounds = argc > 2 ? std::atoi(argv[2]) : 101;
#ifdef _WIN32
    windows::WindowsFileSystem files;
#else
    adapters::PosixFileSystem files(folder.starts_with('/') ? "/" : ".");
#endif
    for (const std::size_t size : {std::size_t{10'000}, std::size_t{1'000'000}, std::size_t{11'000'000}}) {
        compare(files, folder, size, rounds);
    }
}
