#include "base/date_time.h"

#include <cstdio>

namespace base {

std::string fileTimestamp(const DateTime& time) {
    char buffer[80];
    std::snprintf(buffer, sizeof buffer, "%04d%02d%02d_%02d%02d%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    return buffer;
}

} // namespace base
