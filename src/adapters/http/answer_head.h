// The head of one answer, put together from its lines.
#pragma once

#include "ports/https.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace adapters {

struct AnswerHead {
    std::int32_t status = 0;
    std::string reason; // as sent; may be empty
    std::vector<ports::HttpHeader> fields;

    // "HTTP/1.1 200 OK" begins one.
    [[nodiscard]] static bool begins(std::string_view line) noexcept;
    [[nodiscard]] static AnswerHead fromStatusLine(std::string_view line);

    // A line that goes on from the one before is joined to its value; one without a colon is left out.
    void add(std::string_view line);

    // Among the fields, letter case aside; null when it is not there.
    [[nodiscard]] const std::string* find(std::string_view field) const noexcept;
};

// The standard text of a status, for servers that send none; "" for one that has none.
[[nodiscard]] std::string_view standardReason(std::int32_t status) noexcept;

} // namespace adapters
