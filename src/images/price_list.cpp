#include "images/price_list.h"

namespace images {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> lines;
    while (!text.empty()) {
        const std::size_t end = text.find_first_of("\r\n");
        lines.emplace_back(text.substr(0, end));
        if (end == std::string_view::npos) {
            break;
        }
        text.remove_prefix(end + (text.substr(end, 2) == "\r\n" ? 2 : 1));
    }
    return lines;
}

} // namespace

std::vector<std::string> priceListLines(std::string_view bytes, ports::CodePage& ansi) {
    if (bytes.starts_with(kUtf8Mark)) {
        return split(bytes.substr(kUtf8Mark.size()));
    }
    return split(ansi.decode(bytes));
}

} // namespace images
