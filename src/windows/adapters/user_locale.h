// The user's language settings as Windows has them.
#pragma once

#include "ports/locale.h"

namespace windows {

class UserLocale final : public ports::Locale {
public:
    std::string shortMonthName(int month) override;
    std::string generalDate(const base::DateTime& time) override;
    bool equalIgnoringCase(std::string_view left, std::string_view right) override;
};

} // namespace windows
