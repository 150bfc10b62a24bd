#include "request_log.h"

#include <ctime>
#include <iomanip>

namespace supplier {

void RequestLog::write(std::string_view line) {
    const std::scoped_lock lock(m_mutex);
    const std::time_t now = std::time(nullptr);
    std::tm utc{};
    gmtime_r(&now, &utc);
    m_file << std::put_time(&utc, "%Y-%m-%dT%H:%M:%SZ ") << line << std::endl;
}

std::string asWord(std::string_view text) {
    constexpr std::string_view kDigits = "0123456789ABCDEF";
    std::string word;
    for (const char character : text.substr(0, 200)) {
        if (character > ' ' && character < '\x7f' && character != '%') {
            word += character;
        } else {
            const auto byte = static_cast<unsigned char>(character);
            word += {'%', kDigits[byte >> 4], kDigits[byte & 15]};
        }
    }
    return word;
}

} // namespace supplier
