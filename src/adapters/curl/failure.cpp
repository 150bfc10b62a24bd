#include "adapters/curl/failure.h"

#include "base/text.h"

#include <algorithm>
#include <utility>

namespace adapters {
namespace {

using ports::HttpOutcome;
using Kind = HttpOutcome::Kind;

Kind kindOf(CURLcode result) noexcept {
    switch (result) {
    case CURLE_COULDNT_CONNECT: return Kind::ConnectFailed;
    case CURLE_OPERATION_TIMEDOUT: return Kind::TimedOut;
    case CURLE_TOO_MANY_REDIRECTS: return Kind::TooManyRedirects;
    default: return Kind::Failed;
    }
}

} // namespace

HttpOutcome failed(CURLcode code, std::string description) {
    HttpOutcome end;
    end.kind = kindOf(code);
    end.code = code;
    end.description = std::move(description);
    return end;
}

// The system's part of a text may be in the user's code page and of several lines.
std::string oneLine(std::string text) {
    const bool utf8 = base::isValidUtf8(text);
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '\r' || c == '\n'; }, ' ');
    if (!utf8) {
        std::replace_if(
            text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= 0x80; }, '?');
    }
    text.erase(text.find_last_not_of(' ') + 1);
    return text;
}

} // namespace adapters
