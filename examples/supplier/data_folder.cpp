#include "data_folder.h"

#include "adapters/posix/crash_safe_save.h"

#include <fstream>
#include <iterator>

namespace supplier {

std::optional<std::string> DataFolder::read(std::string_view name) const {
    std::ifstream file(path(name), std::ios::binary);
    if (!file || !std::filesystem::is_regular_file(path(name))) {
        return std::nullopt;
    }
    return std::string(std::istreambuf_iterator<char>(file), {});
}

void DataFolder::replace(std::string_view name, std::string_view bytes) const {
    adapters::crashSafeSave(path(name).string(), bytes);
}

} // namespace supplier
