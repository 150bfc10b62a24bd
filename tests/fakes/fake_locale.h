// American English on any machine.
#pragma once

#include "ports/locale.h"

namespace fakes {

class FakeLocale final : public ports::Locale {
public:
    std::string shortMonthName(int month) override;
    std::string generalDate(const base::DateTime& time) override;
    bool equalIgnoringCase(std::string_view left, std::string_view right) override;
};

} // namespace fakes
