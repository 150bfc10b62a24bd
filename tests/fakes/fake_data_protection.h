// Data protection without secrets: keyed, other bytes each time, and anything changed is noticed.
#pragma once

#include "ports/data_protection.h"

#include <cstdint>

namespace fakes {

class FakeDataProtection final : public ports::DataProtection {
public:
    std::string protect(std::string_view plain, std::string_view key) override;
    std::optional<std::string> unprotect(std::string_view bytes, std::string_view key) override;

    // From now on protect raises `error` (0: works again).
    void fail(int error) { m_error = error; }

private:
    int m_error = 0;
    std::uint32_t m_calls = 0;
};

} // namespace fakes
