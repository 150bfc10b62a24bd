#include "files.h"

#include "base/relative_name.h"

#include <system_error>

namespace supplier {

std::optional<Download> findDownload(const DataFolder& folder, std::string_view name) {
    if (!base::namesAFileInside(name)) {
        return std::nullopt;
    }
    const std::string file = "files/" + std::string(name);
    std::error_code missing;
    const auto changed = std::filesystem::last_write_time(folder.path(file), missing);
    auto bytes = folder.read(file);
    if (missing || !bytes) {
        return std::nullopt;
    }
    const std::string version = std::to_string(changed.time_since_epoch().count());
    std::string etag = '"' + version + '-' + std::to_string(bytes->size()) + '"';
    return Download{std::move(*bytes), std::move(etag)};
}

} // namespace supplier
