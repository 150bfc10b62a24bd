// The port to the user's language settings: how dates read, and which texts count as the same.
// Real: windows/adapters; in tests American English: tests/fakes.
#pragma once

#include "base/date_time.h"

#include <string>
#include <string_view>

namespace ports {

class Locale {
public:
    Locale() = default;
    Locale(const Locale&) = delete;
    Locale& operator=(const Locale&) = delete;
    virtual ~Locale() = default;

    // The short name of a month, 1 to 12: "Nov".
    [[nodiscard]] virtual std::string shortMonthName(int month) = 0;

    // Date and time in the short formats of the user: "11/15/2026 7:08:12 PM". At midnight the date alone; on the day
    // from which automation counts (a default DateTime) the time alone. "" for what is no date.
    [[nodiscard]] virtual std::string generalDate(const base::DateTime& time) = 0;

    // Equality without regard to case, as the user's language compares texts.
    [[nodiscard]] virtual bool equalIgnoringCase(std::string_view left, std::string_view right) = 0;
};

} // namespace ports
