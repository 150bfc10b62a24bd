// The conversation with a cabinet library under names of any bytes. Input: one file a line: attributes, size, how many
// bytes of it arrive, the error at its end, then its name. Nothing may land outside the destination or stay there cut
// short. The file system follows Windows' rules for names.
#include "cabinet_services.h"
#include "fakes/fake_file_system.h"
#include "fakes/scripted_cabinet_api.h"

namespace api = ports::cabinet;

namespace {

// Plays one file of the cabinet; the result is the library's own failure.
std::uint32_t play(std::string_view line, std::uint32_t mode, ports::CabinetCallback& callback,
                   fuzz::CabinetServices& test, fakes::FakeFileSystem& files) {
    constexpr std::size_t kPrefix = 4;
    if (line.size() < kPrefix) {
        return callback.fileCallback(mode, {api::kNeedNewCabinet, nullptr, nullptr});
    }
    const auto byte = [&](std::size_t i) { return static_cast<unsigned char>(line[i]); };
    ports::FileInCabinet file{line.substr(kPrefix), byte(1), 0, 0, byte(0), {}};
    if (callback.fileCallback(mode, {api::kFileInCabinet, &file, nullptr}) != api::kCopy) {
        return 0;
    }
    const std::string path = test.ansi.decode(file.fullTargetName);
    if (file.fullTargetName.size() > api::kLongestTarget || !path.starts_with("C:\\out\\")) {
        std::abort();
    }
    try {
        files.replaceFile(path, std::string(byte(2), 'x'));
    } catch (const base::RuntimeError&) {
        return 5;
    }
    const ports::FilePaths paths{file.fullTargetName, byte(3) % 4U == 3 ? byte(3) : 0U};
    return byte(3) % 4U == 2 ? byte(3) : callback.fileCallback(mode, {api::kFileExtracted, nullptr, &paths});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fakes::ScriptedCabinetApi library;
    fakes::FakeFileSystem files;
    fuzz::CabinetServices test(library, files);
    library.script = [&](std::uint32_t mode, ports::CabinetCallback& callback) {
        std::string_view input(reinterpret_cast<const char*>(data), size);
        while (!input.empty()) {
            const std::size_t end = std::min(input.find('\n'), input.size());
            if (const std::uint32_t failure = play(input.substr(0, end), mode, callback, test, files); failure != 0) {
                return failure;
            }
            input.remove_prefix(std::min(end + 1, input.size()));
        }
        return std::uint32_t{0};
    };
    (void)test.succeeds([&] { (void)test.cabinet->GetXML("a"); });
    (void)test.succeeds([&] { (void)test.cabinet->Extract("", "C:\\out", ""); });
    for (const std::string& path : files.files()) {
        if (!path.starts_with("C:\\out\\")) {
            std::abort();
        }
    }
    return 0;
}
