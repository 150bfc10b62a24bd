// One file that the service names, fetched.
#pragma once

#include "exchange/context.h"

#include <cstdint>
#include <optional>
#include <string>

namespace exchange {

struct FetchedFile {
    bool complete = false;
    std::optional<std::int64_t> announcedLength; // bytes, by what the server said
};

// An exchange of its own; `webname` as connection::fileAddress takes it. The folders of `target` are made. A file that
// breaks off goes on the next time.
[[nodiscard]] FetchedFile fetchFile(const Context& context, const std::string& webname, const std::string& target);

} // namespace exchange
