// The port to the library that walks through a cabinet archive and asks, file by file, what to do with it.
// Real: the system's setup library (windows/adapters); natively a decoder that asks in the same order
// (adapters/mspack).
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace ports {

// The numbers are the setup library's own: its callback is called with more of them than are named here.
namespace cabinet {
inline constexpr std::uint32_t kFileInCabinet = 0x11;
inline constexpr std::uint32_t kNeedNewCabinet = 0x12;
inline constexpr std::uint32_t kFileExtracted = 0x13;

// Answers to kFileInCabinet.
inline constexpr std::uint32_t kCopy = 1;
inline constexpr std::uint32_t kSkip = 2;

// A bit of FileInCabinet::dosAttributes: the name is UTF-8. Without it, it is in the ANSI code page.
inline constexpr std::uint16_t kNameIsUtf8 = 0x80;

// Bytes of the target path that the library takes, without the final zero.
inline constexpr std::size_t kLongestTarget = 259;
} // namespace cabinet

struct FileInCabinet {
    std::string_view nameInCabinet; // bytes as they are stored, the folder in front included
    std::uint32_t size = 0;         // in bytes, unpacked
    std::uint16_t dosDate = 0;
    std::uint16_t dosTime = 0;
    std::uint16_t dosAttributes = 0;
    std::string fullTargetName; // filled by the callback before it answers kCopy: an ANSI path
};

struct FilePaths {
    std::string_view target; // ANSI
    std::uint32_t win32Error = 0;
};

struct CabinetNotification {
    std::uint32_t code = 0;
    FileInCabinet* file = nullptr;    // with kFileInCabinet
    const FilePaths* paths = nullptr; // with kFileExtracted
};

class CabinetCallback {
public:
    CabinetCallback() = default;
    CabinetCallback(const CabinetCallback&) = delete;
    CabinetCallback& operator=(const CabinetCallback&) = delete;
    virtual ~CabinetCallback() = default;

    // Must not throw: the library in between knows no exceptions. The result depends on the notification:
    // kFileInCabinet: kCopy extracts the file to fullTargetName, anything else skips it;
    // kFileExtracted: 0, or the Win32 error with which the walk ends (some libraries go on all the same);
    // kNeedNewCabinet: 0, and the walk fails, because no other path is given.
    virtual std::uint32_t fileCallback(std::uint32_t context, const CabinetNotification& notification) noexcept = 0;
};

class CabinetApi {
public:
    CabinetApi() = default;
    CabinetApi(const CabinetApi&) = delete;
    CabinetApi& operator=(const CabinetApi&) = delete;
    virtual ~CabinetApi() = default;

    // Walks through the cabinet with this ANSI path, in the order in which it holds its files; `context` is handed to
    // every call of the callback. A file is extracted, over an existing one, right after the callback has said so, then
    // kFileExtracted is sent. Returns 0, or the Win32 error that ended the walk: 2 for a missing or locked cabinet, 13
    // for one that is broken or none at all. A walk that fails may leave the last target behind, cut short.
    [[nodiscard]] virtual std::uint32_t iterate(std::string_view ansiPath, std::uint32_t context,
                                                CabinetCallback& callback) = 0;

    // Whether there is such a library on this machine.
    [[nodiscard]] virtual bool isPresent() = 0;
};

} // namespace ports
