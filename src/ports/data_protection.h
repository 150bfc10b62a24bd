// The port to what the system encrypts for one user: only that user's programs on that machine can read it again.
// Real: windows/adapters; reversible and readable to nobody but a test: tests/fakes.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ports {

class DataProtection {
public:
    DataProtection() = default;
    DataProtection(const DataProtection&) = delete;
    DataProtection& operator=(const DataProtection&) = delete;
    virtual ~DataProtection() = default;

    // The bytes to keep instead of `plain`; other ones each time. Whoever reads them must name the same key. Raises 75
    // when the system does not protect anything for this user, and 7.
    [[nodiscard]] virtual std::string protect(std::string_view plain, std::string_view key) = 0;

    // What was protected; none when the bytes are damaged or cut, another user's, or were protected under another key.
    // Raises 7.
    [[nodiscard]] virtual std::optional<std::string> unprotect(std::string_view bytes, std::string_view key) = 0;
};

} // namespace ports
