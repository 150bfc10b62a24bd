// Cabinets of any bytes through the whole reader and the portable decoder: nothing outside the destination, nothing in
// it that was not reported as extracted, and the members agree on the number of files.
#include "adapters/mspack/mspack_cabinet_api.h"
#include "adapters/posix/posix_file_system.h"
#include "cabinet_services.h"
#include "contracts/scratch_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

namespace {

// The Windows path of a file below the root.
std::string windowsPath(const std::filesystem::path& file, const std::filesystem::path& root) {
    std::string path = "C:\\" + file.lexically_relative(root).string();
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

void checkFiles(const std::filesystem::path& root, const std::set<std::string>& reported) {
    for (const auto& entry : std::filesystem::recursive_directory_iterator(root)) {
        const std::string path = windowsPath(entry.path(), root);
        const bool isOurs = path == "C:\\x.cab" || path == "C:\\out";
        if (!isOurs && (!path.starts_with("C:\\out\\") || (!entry.is_directory() && !reported.contains(path)))) {
            std::abort();
        }
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const contracts::ScratchFolder scratch;
    const std::filesystem::path& root = scratch.path();
    std::ofstream(root / "x.cab", std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    adapters::PosixFileSystem files(root);
    fakes::FakeCodePage ansi;
    adapters::MspackCabinetApi api(root, ansi);
    fuzz::CabinetServices test(api, files);

    const bool isListed = test.succeeds([&] { (void)test.cabinet->GetInfo(""); });
    std::int32_t count = 0;
    if (isListed != test.succeeds([&] { count = test.cabinet->FileCount(); }) ||
        isListed != test.succeeds([&] { (void)test.cabinet->GetXML(""); }) ||
        (isListed && count != test.events.found)) {
        std::abort();
    }
    (void)test.succeeds([&] { (void)test.cabinet->Extract("", "C:\\out", ""); });
    checkFiles(root, test.events.paths);
    std::filesystem::remove_all(root / "out");
    return 0;
}
