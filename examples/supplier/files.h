// What clients fetch: the files below files/ in the data folder, by their names there.
#pragma once

#include "data_folder.h"

#include <optional>
#include <string>
#include <string_view>

namespace supplier {

struct Download {
    std::string bytes;
    std::string etag; // changes when the file does; with its quotes
};

// Nothing for what is no file, or whose name leads outside.
[[nodiscard]] std::optional<Download> findDownload(const DataFolder& folder, std::string_view name);

} // namespace supplier
