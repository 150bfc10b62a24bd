// What every source of the user's language settings must do, for a user of American English.
#pragma once

#include "ports/locale.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>

namespace contracts {

class LocaleContract : public testing::TestWithParam<std::function<std::unique_ptr<ports::Locale>()>> {
protected:
    LocaleContract() : m_locale(GetParam()()) {}

    ports::Locale& locale() { return *m_locale; }

private:
    std::unique_ptr<ports::Locale> m_locale;
};

} // namespace contracts
