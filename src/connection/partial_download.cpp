#include "connection/partial_download.h"

#include "base/text.h"

#include <array>
#include <charconv>
#include <cstddef>
#include <system_error>

namespace connection {
namespace {

constexpr std::int32_t kOk = 200;
constexpr std::int32_t kPartialContent = 206;
constexpr std::int32_t kRangeNotSatisfiable = 416;

constexpr std::string_view kLineEnd = "\r\n";

std::optional<std::int64_t> wholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool whole = end.ec == std::errc() && end.ptr == text.data() + text.size() && number >= 0;
    return whole ? std::optional(number) : std::nullopt;
}

struct Range {
    std::int64_t begin, total;
};

// "bytes 500-999/1000"; a total that the server does not know is "*", and of no use.
std::optional<Range> contentRange(std::string_view value) {
    constexpr std::string_view kUnit = "bytes ";
    const std::size_t dash = value.find('-');
    const std::size_t slash = value.find('/');
    if (!value.starts_with(kUnit) || dash == std::string_view::npos || slash == std::string_view::npos ||
        dash > slash) {
        return std::nullopt;
    }
    const auto begin = wholeNumber(value.substr(kUnit.size(), dash - kUnit.size()));
    const auto last = wholeNumber(value.substr(dash + 1, slash - dash - 1));
    const auto total = wholeNumber(value.substr(slash + 1));
    const bool toTheEnd = begin && last && total && *last + 1 == *total;
    return toTheEnd ? std::optional(Range{*begin, *total}) : std::nullopt;
}

} // namespace

void FileAnswer::take(std::string_view field, std::string_view value) {
    const std::string name = base::upperCase(field);
    if (name == "ETAG") {
        entityTag = value;
    } else if (name == "LAST-MODIFIED") {
        lastModified = value;
    } else if (name == "CONTENT-LENGTH") {
        contentLength = wholeNumber(value);
    } else if (name == "CONTENT-RANGE") {
        if (const std::optional<Range> range = contentRange(value)) {
            rangeBegin = range->begin;
            rangeTotal = range->total;
        }
    }
}

std::optional<std::int64_t> FileAnswer::fileLength() const {
    return status == kPartialContent ? rangeTotal : contentLength;
}

std::optional<PartialDownload> PartialDownload::of(const std::string& url, const FileAnswer& answer) {
    const bool strongTag = answer.entityTag.starts_with('"');
    const std::string& validator = strongTag ? answer.entityTag : answer.lastModified;
    if (answer.status != kOk || validator.empty() || !answer.contentLength) {
        return std::nullopt;
    }
    return PartialDownload{url, validator, *answer.contentLength};
}

std::optional<PartialDownload> PartialDownload::fromText(std::string_view text) {
    std::array<std::string_view, 3> lines;
    for (std::string_view& line : lines) {
        const std::size_t end = text.find(kLineEnd);
        if (end == std::string_view::npos) {
            return std::nullopt;
        }
        line = text.substr(0, end);
        text.remove_prefix(end + kLineEnd.size());
    }
    const auto total = wholeNumber(lines[2]);
    if (!total || lines[0].empty() || lines[1].empty() || !text.empty()) {
        return std::nullopt;
    }
    return PartialDownload{std::string(lines[0]), std::string(lines[1]), *total};
}

std::string PartialDownload::text() const {
    std::string text;
    for (const std::string& line : {url, validator, std::to_string(total)}) {
        text += line;
        text += kLineEnd;
    }
    return text;
}

std::vector<ports::HttpHeader> PartialDownload::requestHeaders(std::int64_t have) const {
    return {{"Range", "bytes=" + std::to_string(have) + "-"}, {"If-Range", validator}};
}

bool PartialDownload::isRest(const FileAnswer& answer, std::int64_t have) const {
    return answer.status == kPartialContent && answer.rangeBegin == have && answer.rangeTotal == total;
}

bool PartialDownload::isRefused(const FileAnswer& answer, std::int64_t have) const {
    return answer.status == kRangeNotSatisfiable || (answer.status == kPartialContent && !isRest(answer, have));
}

} // namespace connection
