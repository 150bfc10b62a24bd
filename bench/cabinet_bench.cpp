// What extracting a cabinet costs: `cabinet_bench CABINET FOLDER [rounds]` extracts it below FOLDER and, in turn, makes
// the same files bare; natively cabextract does the same work too. Medians and ratios of one run, and the time of a
// listing. `cabinet_bench load` loads the decoder and ends, `cabinet_bench once CABINET FOLDER` extracts once: their
// peak memory, read from outside, differs by what an extraction needs. Paths are the target's own.
#include "baselines/bare_creation.h"
#include "cabinet/clsCABFile.h"
#include "fakes/fake_locale.h"
#include "fakes/fake_settings.h"
#include "fakes/fake_system_info.h"
#include "fakes/one_file.h"
#include "host/diagnostic_log.h"
#include "measure.h"

#ifdef _WIN32
#include "windows/adapters/ansi_code_page.h"
#include "windows/adapters/setup_cabinet_api.h"
#include "windows/adapters/windows_file_system.h"
#else
#include "adapters/mspack/mspack_cabinet_api.h"
#include "adapters/posix/posix_file_system.h"
#include "fakes/fake_code_page.h"
#endif

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace {

#ifdef _WIN32
struct Platform {
    windows::WindowsFileSystem files;
    windows::AnsiCodePage ansi;
    windows::SetupCabinetApi api;
};
#else
struct Platform {
    adapters::PosixFileSystem files{"/"};
    fakes::FakeCodePage ansi;
    adapters::MspackCabinetApi api{"/", ansi};
};
#endif

struct CabinetEntry {
    std::string name;
    std::uint32_t size;
};

class Contents final : public cabinet::CabFileEvents {
public:
    void FileFound(const std::string& name, const base::DateTime&, std::int32_t size,
                   const std::string& path) override {
        files.push_back({path + name, static_cast<std::uint32_t>(size)});
    }
    void BeforeExtract(const std::string&, bool&) override {}
    void AfterExtract(const std::string&) override { ++extracted; }

    std::vector<CabinetEntry> files;
    std::size_t extracted = 0;
};

class Extraction {
public:
    explicit Extraction(const std::string& cabinetPath) : m_cabinet(std::make_shared<cabinet::clsCABFile>(services())) {
        m_cabinet->CabName = windowsPath(cabinetPath);
        m_cabinet->setEvents(&contents);
    }

    bool load() { return m_cabinet->SetuAPIisPresent(); }
    void list() { (void)m_cabinet->GetInfo(""); }
    void listing() { (void)m_cabinet->GetXML(""); }
    void extract(const std::filesystem::path& folder) { m_cabinet->Extract("", windowsPath(folder.string()), ""); }

    Contents contents;

private:
    static std::string windowsPath(std::string path) {
        std::replace(path.begin(), path.end(), '/', '\\');
        return path;
    }
    cabinet::clsCABFile::Services services() {
        return {m_platform.api, m_callback, m_platform.files, m_platform.ansi, m_locale, m_log};
    }

    Platform m_platform;
    fakes::OneFile m_logFile{""};
    fakes::FakeSettings m_settings;
    fakes::NoClock m_clock;
    fakes::FakeLocale m_locale;
    fakes::FakeSystemInfo m_system;
    host::DiagnosticLog m_log{{m_logFile, m_settings, m_clock, m_platform.ansi, m_locale, m_system}};
    cabinet::modCallback m_callback;
    std::shared_ptr<cabinet::clsCABFile> m_cabinet;
};

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "cabinet_bench: %s failed\n", what);
    std::exit(1);
}

// The files in the folders that the cabinet has them in, from memory.
void createBare(const std::vector<CabinetEntry>& files, const std::filesystem::path& folder) {
    std::filesystem::path last;
    for (const CabinetEntry& file : files) {
        std::string name = file.name;
        std::replace(name.begin(), name.end(), '\\', '/');
        const std::filesystem::path path = folder / name;
        if (path.parent_path() != last) {
            last = path.parent_path();
            std::filesystem::create_directories(last);
        }
        if (!baselines::createFile(path.string().c_str(), file.size)) {
            fail("bare creation");
        }
    }
}

// Runs a contestant into a fresh folder that is gone again afterwards.
template <typename Step>
double inFreshFolder(const std::filesystem::path& folder, Step&& step) {
    std::filesystem::remove_all(folder);
    const double time = bench::seconds(step);
    std::filesystem::remove_all(folder);
    return time;
}

int compare(const std::string& cabinet, const std::filesystem::path& folder, int rounds) {
    Extraction ours(cabinet);
    ours.list();
    const std::size_t count = ours.contents.files.size();
    std::vector<double> extraction, bare, tool, listing;
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(inFreshFolder(folder / "bare", [&] { createBare(ours.contents.files, folder / "bare"); }));
        ours.contents.extracted = 0;
        extraction.push_back(inFreshFolder(folder / "ours", [&] { ours.extract(folder / "ours"); }));
        if (ours.contents.extracted != count) {
            fail("the extraction");
        }
        listing.push_back(bench::seconds([&] { ours.listing(); }));
#ifndef _WIN32
        const std::string command = "cabextract -q -d '" + (folder / "tool").string() + "' '" + cabinet + "'";
        tool.push_back(inFreshFolder(folder / "tool", [&] {
            if (std::system(command.c_str()) != 0) {
                fail("cabextract");
            }
        }));
#endif
    }
    std::printf("%zu files: extracted %.3f s, made bare %.3f s, ratio %.2f; listing %.4f s\n", count,
                bench::median(extraction), bench::median(bare), bench::median(extraction) / bench::median(bare),
                bench::median(listing));
    if (!tool.empty()) {
        std::printf("cabextract %.3f s, ratio %.2f\n", bench::median(tool),
                    bench::median(extraction) / bench::median(tool));
    }
    return 0;
}

int sayDoneAndWait() {
    std::puts("done");
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments.size() == 1 && arguments[0] == "load") {
        Extraction decoder("");
        return decoder.load() ? sayDoneAndWait() : 1;
    }
    if (arguments.size() == 3 && arguments[0] == "once") {
        Extraction extraction(arguments[1]);
        extraction.extract(arguments[2]);
        return sayDoneAndWait();
    }
    if (arguments.size() < 2) {
        std::fprintf(stderr, "usage: cabinet_bench CABINET FOLDER [rounds]\n");
        return 2;
    }
    return compare(arguments[0], arguments[1], arguments.size() > 2 ? std::atoi(arguments[2].c_str()) : 5);
}
