// What is known of a file of which only the beginning has arrived: enough to ask for the rest another time.
#pragma once

#include "ports/https.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace connection {

// What the head of an answer says about the file in its body.
struct FileAnswer {
    std::int32_t status = 0;
    std::string entityTag;                     // ETag
    std::string lastModified;                  // Last-Modified, as sent
    std::optional<std::int64_t> contentLength; // of this body; bytes
    // Content-Range: where this body begins in the file, and how long that is.
    std::optional<std::int64_t> rangeBegin;
    std::optional<std::int64_t> rangeTotal;

    // Takes a header that matters here, whatever its letter case; passes over any other and what cannot be read.
    void take(std::string_view field, std::string_view value);
    // The whole file's; nothing when the server does not say.
    [[nodiscard]] std::optional<std::int64_t> fileLength() const;
};

struct PartialDownload {
    std::string url;
    std::string validator; // a strong entity tag, or a date of change: the rest must be of the same file
    std::int64_t total = 0;

    // Nothing for an answer whose rest could not be asked for.
    [[nodiscard]] static std::optional<PartialDownload> of(const std::string& url, const FileAnswer& answer);
    // As it is kept beside the part: three lines. Nothing for any other text.
    [[nodiscard]] static std::optional<PartialDownload> fromText(std::string_view text);
    [[nodiscard]] std::string text() const;

    // They ask for the file from `have` bytes on, and for all of it if it is another one by now.
    [[nodiscard]] std::vector<ports::HttpHeader> requestHeaders(std::int64_t have) const;
    // The body is what those headers asked for.
    [[nodiscard]] bool isRest(const FileAnswer& answer, std::int64_t have) const;
    // The server has no such rest, or sends another part of the file.
    [[nodiscard]] bool isRefused(const FileAnswer& answer, std::int64_t have) const;
};

} // namespace connection
