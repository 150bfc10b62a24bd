#include "adapters/http/answer_head.h"

#include "base/text.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace adapters {
namespace {

constexpr std::string_view kBlanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(kBlanks);
    return first == text.npos ? std::string_view{} : text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

struct Reason {
    std::int32_t status;
    std::string_view text;
};

constexpr std::array kReasons{
    Reason{200, "OK"},
    Reason{201, "Created"},
    Reason{202, "Accepted"},
    Reason{203, "Non-Authoritative Information"},
    Reason{204, "No Content"},
    Reason{205, "Reset Content"},
    Reason{206, "Partial Content"},
    Reason{300, "Multiple Choices"},
    Reason{301, "Moved Permanently"},
    Reason{302, "Found"},
    Reason{303, "See Other"},
    Reason{304, "Not Modified"},
    Reason{305, "Use Proxy"},
    Reason{307, "Temporary Redirect"},
    Reason{308, "Permanent Redirect"},
    Reason{400, "Bad Request"},
    Reason{401, "Unauthorized"},
    Reason{402, "Payment Required"},
    Reason{403, "Forbidden"},
    Reason{404, "Not Found"},
    Reason{405, "Method Not Allowed"},
    Reason{406, "Not Acceptable"},
    Reason{407, "Proxy Authentication Required"},
    Reason{408, "Request Timeout"},
    Reason{409, "Conflict"},
    Reason{410, "Gone"},
    Reason{411, "Length Required"},
    Reason{412, "Precondition Failed"},
    Reason{413, "Content Too Large"},
    Reason{414, "URI Too Long"},
    Reason{415, "Unsupported Media Type"},
    Reason{416, "Range Not Satisfiable"},
    Reason{417, "Expectation Failed"},
    Reason{421, "Misdirected Request"},
    Reason{422, "Unprocessable Content"},
    Reason{426, "Upgrade Required"},
    Reason{429, "Too Many Requests"},
    Reason{431, "Request Header Fields Too Large"},
    Reason{500, "Internal Server Error"},
    Reason{501, "Not Implemented"},
    Reason{502, "Bad Gateway"},
    Reason{503, "Service Unavailable"},
    Reason{504, "Gateway Timeout"},
    Reason{505, "HTTP Version Not Supported"},
    Reason{511, "Network Authentication Required"},
};

} // namespace

bool AnswerHead::begins(std::string_view line) noexcept {
    return line.starts_with("HTTP/");
}

AnswerHead AnswerHead::fromStatusLine(std::string_view line) {
    AnswerHead head;
    line.remove_prefix(std::min(line.find(' '), line.size()));
    const std::string_view rest = trimmed(line);
    const auto number = std::from_chars(rest.data(), rest.data() + rest.size(), head.status);
    head.reason = trimmed(rest.substr(static_cast<std::size_t>(number.ptr - rest.data())));
    return head;
}

void AnswerHead::add(std::string_view line) {
    if (!line.empty() && (line[0] == ' ' || line[0] == '\t') && !fields.empty()) {
        fields.back().value.append(" ").append(trimmed(line));
        return;
    }
    if (const auto colon = line.find(':'); colon != line.npos) {
        fields.push_back({std::string(trimmed(line.substr(0, colon))), std::string(trimmed(line.substr(colon + 1)))});
    }
}

const std::string* AnswerHead::find(std::string_view field) const noexcept {
    const auto found = std::find_if(fields.begin(), fields.end(), [&](const auto& header) {
        return base::equalIgnoringAsciiCase(header.field, field);
    });
    return found == fields.end() ? nullptr : &found->value;
}

std::string_view standardReason(std::int32_t status) noexcept {
    const auto* found =
        std::find_if(kReasons.begin(), kReasons.end(), [&](const Reason& r) { return r.status == status; });
    return found == kReasons.end() ? std::string_view{} : found->text;
}

} // namespace adapters
