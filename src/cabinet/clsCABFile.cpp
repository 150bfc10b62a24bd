#include "cabinet/clsCABFile.h"

#include "base/relative_name.h"
#include "base/resume_next.h"
#include "base/runtime_error.h"
#include "base/split_path.h"
#include "base/text.h"
#include "cabinet/dos_time.h"
#include "cabinet/error_texts.h"
#include "ports/ensure_folder.h"

#include <algorithm>
#include <utility>

namespace cabinet {
namespace {

namespace api = ports::cabinet;

constexpr std::string_view kSource = "CabFile";
constexpr std::string_view kExtractPrefix = "clsCabFile.Extract: ";

constexpr std::uint32_t kInvalidData = 13;
constexpr std::uint32_t kCancelled = 1223; // ends the walk when a handler has raised something; never reported

[[noreturn]] void raise(std::int32_t number, std::string_view prefix, std::string_view text) {
    throw base::RuntimeError(number, std::string(kSource), std::string(prefix).append(text));
}

[[noreturn]] void raiseWin32(std::uint32_t code, std::string_view prefix = {}) {
    raise(static_cast<std::int32_t>(code), prefix, win32ErrorText(code));
}

// Nothing is escaped: what reads the listing expects names as they are.
std::string element(std::string_view content, std::string_view tag, std::string_view attribute = {},
                    std::string_view value = {}) {
    std::string text = "<" + std::string(tag);
    if (!attribute.empty()) {
        text.append(" ").append(attribute).append(" = '").append(value).append("'");
    }
    return text.append(">").append(content).append("</").append(tag).append(">");
}

} // namespace

std::int32_t clsCABFile::FileCount() {
    requireCabName({});
    becomeCurrent();
    iterateOrRaise(kCount);
    return m_fileCount;
}

bool clsCABFile::GetInfo(const std::string& fileName) {
    requireCabName({});
    becomeCurrent();
    m_fileFilter = fileName;
    iterateOrRaise(kInfo);
    return true;
}

std::string clsCABFile::GetXML(const std::string& fileName) {
    requireCabName({});
    becomeCurrent();
    m_fileFilter = fileName;
    m_listing.clear();
    iterateOrRaise(kXml);
    return R"(<?xml version="1.0"?>)" + element(element(m_listing, "FILES"), "CABFILE", "CABFILENAME", CabName);
}

bool clsCABFile::Extract(const std::string& fileName, const std::string& destFolder, const std::string& newName) {
    if (CabName.empty()) {
        trace("No file name");
    }
    requireCabName(kExtractPrefix);
    trace("Before setupCabFile");
    becomeCurrent();
    trace("Before mode variables");
    m_fileFilter = fileName;
    m_destFolder = destFolder;
    m_newName = newName;
    trace("SetupIterateCabinet");
    if (const std::uint32_t failure = iterate(kExtract); failure != 0) {
        trace("Lastdllerror " + std::to_string(failure));
        raiseWin32(failure, kExtractPrefix);
    }
    return true;
}

bool clsCABFile::SetuAPIisPresent() {
    return m_services.api.isPresent();
}

void clsCABFile::requireCabName(std::string_view prefix) const {
    if (CabName.empty()) {
        raise(kNoCabName, prefix, ownErrorText(kNoCabName));
    }
}

// 0, or the Win32 error of the iteration. What a handler raised while it went on comes out here.
std::uint32_t clsCABFile::iterate(Mode mode) {
    m_target = {};
    m_failure = 0;
    m_raised = nullptr;
    const std::uint32_t failure = m_services.api.iterate(m_services.ansi.encode(CabName), mode, m_services.callback);
    // A file that was begun and never reported as extracted: the walk broke off in it.
    const bool brokeOff = removeIfShort();
    if (m_raised) {
        std::rethrow_exception(std::exchange(m_raised, nullptr));
    }
    if (m_failure != 0) {
        return m_failure;
    }
    return failure == 0 && brokeOff ? kInvalidData : failure;
}

void clsCABFile::iterateOrRaise(Mode mode) {
    if (const std::uint32_t failure = iterate(mode); failure != 0) {
        raiseWin32(failure);
    }
}

// A trace that cannot be written, as in the root of a drive that belongs to the administrator, stops no extraction.
void clsCABFile::trace(std::string_view step) {
    base::resumeNext([&] { m_services.log.WriteLog("clsCABFile:Extract, " + std::string(step), false, false); });
}

std::uint32_t clsCABFile::notify(std::uint32_t mode, const ports::CabinetNotification& notification) noexcept {
    const bool isFile = notification.code == api::kFileInCabinet;
    if (isFile && (m_failure != 0 || m_raised)) {
        return api::kSkip;
    }
    try {
        return handle(mode, notification);
    } catch (...) {
        m_raised = std::current_exception();
        return isFile ? api::kSkip : kCancelled;
    }
}

// A cabinet that goes on in another file is not asked for: 0 without a path makes the library fail.
std::uint32_t clsCABFile::handle(std::uint32_t mode, const ports::CabinetNotification& notification) {
    switch (notification.code) {
    case api::kFileInCabinet: return fileInCabinet(mode, *notification.file);
    case api::kFileExtracted: return fileExtracted(*notification.paths);
    default: return 0;
    }
}

std::uint32_t clsCABFile::fileInCabinet(std::uint32_t mode, ports::FileInCabinet& file) {
    if (mode == kCount) {
        ++m_fileCount;
        return api::kSkip;
    }
    const std::string name = nameOf(file);
    const auto [folder, plainName] = base::splitPath(name);
    switch (mode) {
    case kInfo:
        if (matches(name) && m_events != nullptr) {
            m_events->FileFound(std::string(plainName), fromDosTime(file.dosDate, file.dosTime),
                                static_cast<std::int32_t>(file.size), std::string(folder));
        }
        return api::kSkip;
    case kExtract: return matches(name) ? extractFile(name, file) : api::kSkip;
    case kXml:
        if (matches(plainName)) {
            appendListing(name, file);
        }
        return api::kSkip;
    default: return 0;
    }
}

std::uint32_t clsCABFile::extractFile(const std::string& name, ports::FileInCabinet& file) {
    if (m_events != nullptr) {
        bool cancel = false;
        m_events->BeforeExtract(name, cancel);
        if (cancel) {
            return api::kSkip;
        }
    }
    const std::string path = targetPath(name);
    if (path.empty()) {
        return api::kSkip;
    }
    std::string target = m_services.ansi.encode(path);
    if (target.size() > api::kLongestTarget || !ports::ensureFolder(m_services.files, base::splitPath(path).folder)) {
        return api::kSkip;
    }
    file.fullTargetName = std::move(target);
    m_target = {path, file.size};
    return api::kCopy;
}

// Where a file goes, or "" when its name in the cabinet, which may come from anybody, must not become a path: it leads
// elsewhere, is no file, or has letters that the code page lacks.
std::string clsCABFile::targetPath(const std::string& name) {
    std::string folder = m_destFolder.empty() ? std::string(base::splitPath(CabName).folder) : m_destFolder;
    if (!folder.ends_with('\\')) {
        folder += '\\'; // an empty folder becomes the root of the current drive
    }
    if (!m_newName.empty()) {
        return folder + m_newName;
    }
    if (!base::namesAFileInside(name) || m_services.ansi.decode(m_services.ansi.encode(name)) != name) {
        return {};
    }
    const std::size_t start = folder.size();
    folder += name;
    // Windows takes a slash for a separator too; only at backslashes are folders made.
    std::replace(folder.begin() + static_cast<std::ptrdiff_t>(start), folder.end(), '/', '\\');
    return folder;
}

std::uint32_t clsCABFile::fileExtracted(const ports::FilePaths& paths) {
    const bool isShort = removeIfShort();
    if (paths.win32Error != 0 || isShort) {
        m_failure = paths.win32Error != 0 ? paths.win32Error : kInvalidData;
        return m_failure;
    }
    if (m_events != nullptr) {
        m_events->AfterExtract(m_services.ansi.decode(paths.target));
    }
    return 0;
}

bool clsCABFile::removeIfShort() {
    const Target target = std::exchange(m_target, {});
    if (target.path.empty()) {
        return false;
    }
    const auto size = base::resumeNext([&] { return m_services.files.fileSize(target.path); });
    if (!size || *size >= target.size) {
        return false;
    }
    base::resumeNext([&] {
        // What cannot be opened for writing is not the library's work but what was there before.
        m_services.files.requireWritable(target.path);
        m_services.files.removeFile(target.path);
    });
    return true;
}

// The name as the cabinet has it. Bytes that claim to be UTF-8 and are not are taken for the code page's.
std::string clsCABFile::nameOf(const ports::FileInCabinet& file) {
    const bool isUtf8 = (file.dosAttributes & api::kNameIsUtf8) != 0 && base::isValidUtf8(file.nameInCabinet);
    return isUtf8 ? std::string(file.nameInCabinet) : m_services.ansi.decode(file.nameInCabinet);
}

bool clsCABFile::matches(std::string_view name) {
    return m_fileFilter.empty() || m_services.locale.equalIgnoringCase(m_fileFilter, name);
}

void clsCABFile::appendListing(const std::string& name, const ports::FileInCabinet& file) {
    const auto [folder, plainName] = base::splitPath(name);
    const std::string date = m_services.locale.generalDate(fromDosTime(file.dosDate, file.dosTime));
    m_listing += element(element(name, "FULLNAME") + element(plainName, "NAME") + element(date, "DATE") +
                             element(std::to_string(file.size), "SIZE") + element(folder, "PATH"),
                         "FILE") +
                 "\r\n";
}

} // namespace cabinet
