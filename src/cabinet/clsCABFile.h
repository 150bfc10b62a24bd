// Lists and extracts the files of a cabinet archive (.CAB) through the setup library.
#pragma once

#include "base/date_time.h"
#include "cabinet/modCallback.h"
#include "host/diagnostic_log.h"
#include "ports/cabinet_api.h"
#include "ports/code_page.h"
#include "ports/file_system.h"
#include "ports/locale.h"

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

namespace cabinet {

// Who hears of the files. What a handler raises ends the iteration and comes out of the member that started it.
class CabFileEvents {
public:
    CabFileEvents() = default;
    CabFileEvents(const CabFileEvents&) = delete;
    CabFileEvents& operator=(const CabFileEvents&) = delete;
    virtual ~CabFileEvents() = default;

    // A file's name without its folder, its date and time as they are stored, its size in bytes, and the folder inside
    // the cabinet with its final backslash, or "".
    virtual void FileFound(const std::string& name, const base::DateTime& fileDate, std::int32_t size,
                           const std::string& path) = 0;
    // A file's full name inside the cabinet, before it is extracted. Setting `cancel` skips it.
    virtual void BeforeExtract(const std::string& name, bool& cancel) = 0;
    // The full path of a file that was extracted without error.
    virtual void AfterExtract(const std::string& path) = 0;
};

// Owned by shared pointers alone: every iterating member puts the object into the callback's slot, which keeps it
// alive.
//
// Every iterating member raises kNoCabName while CabName is empty; when the library fails, the Win32 error code with
// the reader's message for it; both with the source "CabFile". Fails with 13 when a file came out shorter than it
// should be.
class clsCABFile : public std::enable_shared_from_this<clsCABFile> {
public:
    // None of the services is owned; they outlive the object.
    struct Services {
        ports::CabinetApi& api;
        modCallback& callback;
        ports::FileSystem& files;
        ports::CodePage& ansi;
        ports::Locale& locale;
        host::DiagnosticLog& log;
    };

    explicit clsCABFile(const Services& services) : m_services(services) {}

    std::string CabName; // full path of the cabinet

    // Who hears of the files from now on; null: nobody. Not owned.
    void setEvents(CabFileEvents* events) noexcept { m_events = events; }

    // Counts the files. The count goes on from that of the call before, so a second call on the same object says twice
    // as many: hosts are written for that.
    std::int32_t FileCount();

    // Extracts the files whose full name in the cabinet is `fileName` (any case), or all when it is empty, into
    // `destFolder` (empty: the cabinet's own), each as `newName` unless that is empty. A folder inside the cabinet
    // becomes one below the destination. Passed over in silence: names that would lead outside the destination or that
    // Windows does not let be a file, paths too long for the library, and files whose folder cannot be made.
    // A file that breaks off is not left behind. True; failures are raised.
    bool Extract(const std::string& fileName, const std::string& destFolder, const std::string& newName);

    // Raises FileFound for the files whose full name in the cabinet is `fileName`, or for all. True.
    bool GetInfo(const std::string& fileName);

    // The files whose name without folder (unlike above: what hosts show of it) is `fileName`, or all, as a small XML
    // text. Nothing in it is escaped: hosts cut it up as plain text.
    std::string GetXML(const std::string& fileName);

    // True when there is a setup library to call. The misspelling is part of the name that hosts call.
    [[nodiscard]] bool SetuAPIisPresent();

    // A notification of the library, handed on by modCallback; the result is the library's next step.
    std::uint32_t notify(std::uint32_t mode, const ports::CabinetNotification& notification) noexcept;

private:
    // What is done with each file; the number is the context of the iteration.
    enum Mode : std::uint32_t { kCount = 0, kInfo = 1, kExtract = 2, kXml = 3 };

    // The file that the library is extracting.
    struct Target {
        std::string path; // empty: none
        std::uint32_t size = 0;
    };

    void requireCabName(std::string_view prefix) const;
    void becomeCurrent() { m_services.callback.setCurrentCabinet(shared_from_this()); }
    [[nodiscard]] std::uint32_t iterate(Mode mode);
    void iterateOrRaise(Mode mode);
    void trace(std::string_view step);

    std::uint32_t handle(std::uint32_t mode, const ports::CabinetNotification& notification);
    std::uint32_t fileInCabinet(std::uint32_t mode, ports::FileInCabinet& file);
    std::uint32_t extractFile(const std::string& name, ports::FileInCabinet& file);
    std::uint32_t fileExtracted(const ports::FilePaths& paths);
    [[nodiscard]] std::string nameOf(const ports::FileInCabinet& file);
    [[nodiscard]] bool matches(std::string_view name);
    [[nodiscard]] std::string targetPath(const std::string& name);
    void appendListing(const std::string& name, const ports::FileInCabinet& file);
    // Done with the target. True when it was cut short; it is then removed.
    bool removeIfShort();

    Services m_services;
    CabFileEvents* m_events = nullptr;
    std::int32_t m_fileCount = 0;
    std::string m_fileFilter;
    std::string m_destFolder;
    std::string m_newName;
    std::string m_listing;

    // Of the iteration that is going on. After the first failure of ours the rest of the files is skipped: not every
    // library stops when the callback asks for it.
    Target m_target;
    std::uint32_t m_failure = 0;
    std::exception_ptr m_raised;
};

} // namespace cabinet
