// The system's own data protection: a key of the user's that nobody sees, and the caller's key on top.
#pragma once

#include "ports/data_protection.h"

namespace windows {

class UserDataProtection final : public ports::DataProtection {
public:
    std::string protect(std::string_view plain, std::string_view key) override;
    std::optional<std::string> unprotect(std::string_view bytes, std::string_view key) override;
};

} // namespace windows
