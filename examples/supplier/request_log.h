// requests.log in the data folder: one line per answered request, for tests and for the curious. Never a password.
//
//   2026-02-01T09:30:00Z https POST / bytes=410 status=200 command=sendimagelinks210 profile=1001 lastdate= redo
#pragma once

#include <filesystem>
#include <fstream>
#include <mutex>
#include <string>
#include <string_view>

namespace supplier {

class RequestLog {
public:
    explicit RequestLog(const std::filesystem::path& file) : m_file(file, std::ios::app) {}

    // Adds the time and the line's end. From any thread.
    void write(std::string_view line);

private:
    std::mutex m_mutex;
    std::ofstream m_file;
};

// A text of a client as one word of printable ASCII: other characters, blanks and "%" become %XX.
[[nodiscard]] std::string asWord(std::string_view text);

} // namespace supplier
