#include "host/diagnostic_log.h"

#include "base/runtime_error.h"

#include <cstdint>
#include <cstdio>
#include <limits>

namespace host {
namespace {

constexpr std::string_view kLogFile = "c:\\QuorvantisLog.txt";
constexpr std::size_t kCallsBetweenRestarts = 50;

// The difference of two signed 32-bit numbers, and an error where that is no such number: never a wrapped one.
std::int32_t committedBytes(const ports::PageFile& pageFile) {
    const std::int64_t committed = std::int64_t{pageFile.total} - pageFile.available;
    if (committed > std::numeric_limits<std::int32_t>::max() || committed < std::numeric_limits<std::int32_t>::min()) {
        throw base::RuntimeError(base::error::kOverflow);
    }
    return static_cast<std::int32_t>(committed);
}

std::string clockText(const base::DateTime& time) {
    char buffer[40];
    std::snprintf(buffer, sizeof buffer, "%02d:%02d:%02d", time.hour, time.minute, time.second);
    return buffer;
}

std::string headerLine(const base::DateTime& time, ports::Locale& locale) {
    char day[16];
    std::snprintf(day, sizeof day, "%02d ", time.day);
    return day + locale.shortMonthName(time.month) + ' ' + std::to_string(time.year) + ", " + clockText(time) + "\r\n";
}

} // namespace

void DiagnosticLog::WriteLog(std::string_view message, bool restart, bool useCounter) {
    const std::int32_t committed = committedBytes(m_services.system.pageFile());
    const bool startAfresh = restart && (!useCounter || countCall());
    const base::DateTime now = m_services.clock.now();
    const std::string header = startAfresh ? headerLine(now, m_services.locale) : std::string();
    const std::string entry =
        clockText(now).append(",").append(message).append(",").append(std::to_string(committed)).append("\r\n");
    const std::string bytes = m_services.ansi.encode(header + entry);
    if (startAfresh) {
        m_services.files.replaceFile(kLogFile, bytes);
    } else {
        m_services.files.appendFile(kLogFile, bytes);
    }
}

// Adds one "X" to the counter. True when it is full; it then goes on at one, not at none, so the first round is the
// only one of 51 calls. Written as "Quorvantis" and read as "QuorVantis": names of settings ignore case.
bool DiagnosticLog::countCall() {
    ports::Settings& settings = m_services.settings;
    settings.set("Quorvantis", "Log", "Counter", "X" + settings.get("QuorVantis", "Log", "Counter"));
    if (settings.get("QuorVantis", "Log", "Counter").size() <= kCallsBetweenRestarts) {
        return false;
    }
    settings.set("Quorvantis", "Log", "Counter", "X");
    return true;
}

} // namespace host
