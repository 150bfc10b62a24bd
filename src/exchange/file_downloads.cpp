#include "exchange/file_downloads.h"

#include "base/file_version.h"
#include "base/relative_name.h"
#include "base/resume_next.h"
#include "base/runtime_error.h"
#include "base/split_path.h"
#include "base/text.h"
#include "base/variant.h"
#include "cabinet/clsCABFile.h"
#include "cabinet/modCallback.h"
#include "exchange/fetch_file.h"
#include "exchange/report_errors.h"
#include "exchange/setup_program.h"
#include "ports/ensure_folder.h"

#include <string_view>

namespace exchange {
namespace {

std::string withBackslash(std::string folder) {
    return folder.empty() || folder.ends_with('\\') ? folder : folder + '\\';
}

// Hosts register these with the system.
bool isLibrary(std::string_view path) {
    const std::string upper = base::upperCase(path);
    return upper.ends_with(".DLL") || upper.ends_with(".OCX");
}

// What is left in the way is overwritten the next time.
void removeQuietly(ports::FileSystem& fileSystem, const std::string& path) noexcept {
    base::quietly([&] {
        if (fileSystem.fileExists(path)) {
            fileSystem.removeFile(path);
        }
    });
}

// What a cabinet gave; removed in the end.
class Unpacked final : public cabinet::CabFileEvents {
public:
    Unpacked(cabinet::clsCABFile& reader, ports::FileSystem& fileSystem) : m_reader(reader), m_fileSystem(fileSystem) {
        m_reader.setEvents(this);
    }
    ~Unpacked() override {
        m_reader.setEvents(nullptr); // it stays in the callback's slot
        for (const std::string& path : m_paths) {
            removeQuietly(m_fileSystem, path);
        }
    }

    [[nodiscard]] const std::vector<std::string>& paths() const noexcept { return m_paths; }

    void FileFound(const std::string&, const base::DateTime&, std::int32_t, const std::string&) override {}
    void BeforeExtract(const std::string&, bool&) override {}
    void AfterExtract(const std::string& path) override { m_paths.push_back(path); }

private:
    cabinet::clsCABFile& m_reader;
    ports::FileSystem& m_fileSystem;
    std::vector<std::string> m_paths;
};

} // namespace

FileDownloads::FileDownloads(const Context& context, const std::string& dataFolder, bool force)
    : m_context(context),
      m_host(context.session.globals()),
      m_dataFolder(dataFolder),
      m_incoming(dataFolder + "files\\incoming\\"),
      m_force(force) {}

FileDownloads::~FileDownloads() {
    for (const auto& [address, arrived] : m_arrived) {
        removeQuietly(m_context.services.fileSystem, arrived.path);
    }
}

bool FileDownloads::run(const xml::XmlDocument& results) {
    bool all = true;
    for (const xml::XmlNode& element : results.selectNodes("//file")) {
        if (m_context.session.gCancelled) {
            return false;
        }
        const ListedFile file = ListedFile::from(element);
        bool done = false;
        reportErrors(m_context.dialogues, "CheckForFileDownloads", [&] { done = handle(file); });
        all = all && done;
    }
    return all;
}

bool FileDownloads::handle(const ListedFile& file) {
    if (!file.isWholeCabinet() && !base::namesAFileInside(file.filename)) {
        log("refused file " + file.filename);
        return false;
    }
    if (file.destination == Destination::Unknown) {
        log("no such destination for " + file.filename);
        return false;
    }
    const std::string folder = folderFor(file.destination);
    if (folder.empty()) {
        couldNotPlace(file.filename);
        return false;
    }
    const std::string target = folder + file.filename;
    if (!file.isWholeCabinet() && !needed(file, target)) {
        return true;
    }
    const std::optional<Arrived> arrived = fetch(file);
    if (!arrived) {
        return false;
    }
    return file.inCabinet() ? unpack(file, *arrived, folder) : take(file, *arrived, target);
}

// The system's own folders take rights that the user need not have.
std::string FileDownloads::folderFor(Destination destination) const {
    switch (destination) {
    case Destination::Files: {
        const std::string folder = base::toText(m_host.valueIfPresent("gfilespath"));
        return folder.empty() ? m_dataFolder + "files\\" : withBackslash(folder);
    }
    case Destination::Database: return m_dataFolder;
    case Destination::Installed:
        return withBackslash(m_context.services.settings.get(m_host.text("gSettingString"), "Main", "InstalledFolder"));
    case Destination::Newsflash: return m_dataFolder + "newsflash\\";
    case Destination::System:
    case Destination::Unknown: break;
    }
    return {};
}

bool FileDownloads::needed(const ListedFile& file, const std::string& target) const {
    if (m_force || !m_context.services.fileSystem.fileExists(target)) {
        return true;
    }
    const std::optional<base::FileVersion> listed = base::toFileVersion(file.version);
    const std::optional<base::FileVersion> here = m_context.services.programs.version(target);
    return !listed || !here || *listed > *here;
}

// Waits under its name alone: where it belongs is another question.
std::optional<FileDownloads::Arrived> FileDownloads::fetch(const ListedFile& file) {
    if (const auto known = m_arrived.find(file.webname); known != m_arrived.end()) {
        return known->second;
    }
    const std::string name(base::nameWithoutFolder(file.inCabinet() ? file.cabfilename : file.filename));
    if (!base::namesAFileInside(name)) {
        log("refused file " + name);
        return std::nullopt;
    }
    m_context.observer.status("Downloading " + name + ", Please wait");
    const std::string path = m_incoming + name;
    // What waits under this name makes way: a file of another address, or of a pass that was cut short.
    std::erase_if(m_arrived, [&](const auto& entry) { return base::equalInUpperCase(entry.second.path, path); });
    removeQuietly(m_context.services.fileSystem, path);
    const FetchedFile fetched = fetchFile(m_context, file.webname, path);
    if (!fetched.complete) {
        return std::nullopt;
    }
    return m_arrived.emplace(file.webname, Arrived{path, fetched.announcedLength}).first->second;
}

bool FileDownloads::unpack(const ListedFile& file, const Arrived& cabinet, const std::string& folder) {
    const std::string unpackedFolder = m_incoming + "unpacked\\";
    if (!ports::ensureFolder(m_context.services.fileSystem, unpackedFolder)) {
        throw base::RuntimeError(base::error::kPathFileAccess);
    }
    const auto reader = std::make_shared<cabinet::clsCABFile>(m_context.services.cabinets);
    Unpacked unpacked(*reader, m_context.services.fileSystem);
    reader->CabName = cabinet.path;
    static_cast<void>(reader->Extract(file.isWholeCabinet() ? "" : file.filename, unpackedFolder, ""));
    bool all = true;
    for (const std::string& path : unpacked.paths()) {
        const auto length = static_cast<std::int64_t>(m_context.services.fileSystem.fileSize(path));
        all = take(file, {path, length}, folder + path.substr(unpackedFolder.size())) && all;
    }
    if (unpacked.paths().empty()) {
        log("nothing for " + file.filename + " in " + file.cabfilename);
    }
    return all && !unpacked.paths().empty();
}

bool FileDownloads::take(const ListedFile& file, const Arrived& arrived, const std::string& target) {
    const bool setup = isSetupProgram(target);
    if (setup) {
        SetupCheck(m_context.services.programs, m_context.services.fileSystem, m_host)
            .afterDownload(arrived.path, arrived.announcedLength, file.version);
    }
    if (!place(arrived.path, target)) {
        return false;
    }
    if (setup) {
        runLater(m_context.session, target);
    }
    return true;
}

// A library that is in use stays the old one, and registered.
bool FileDownloads::place(const std::string& from, const std::string& target) {
    const std::string folder(base::splitPath(target).folder);
    if (!ports::ensureFolder(m_context.services.fileSystem, folder)) {
        couldNotPlace(target);
        return false;
    }
    const bool library = isLibrary(target);
    if (library && m_context.services.fileSystem.fileExists(target)) {
        m_context.observer.replacingLibrary(target);
    }
    const bool copied = copy(from, target);
    if (library && m_context.services.fileSystem.fileExists(target)) {
        m_context.observer.libraryPlaced(target);
    }
    return copied;
}

bool FileDownloads::copy(const std::string& from, const std::string& target) {
    const auto error = base::attempt([&] { m_context.services.fileSystem.copyFile(from, target); });
    if (error) {
        log(error->description() + " " + target);
        couldNotPlace(target);
    }
    return !error;
}

// The host tells its user to leave it, so that the file can be replaced the next time.
void FileDownloads::couldNotPlace(const std::string& target) {
    log("could not place " + target);
    base::resumeNext([&] { m_host.put("gDisplayExitMsg", true); }); // not every host has it
}

void FileDownloads::log(const std::string& text) {
    m_context.observer.trace("Sub CheckForFileDownloads: " + text);
}

} // namespace exchange
