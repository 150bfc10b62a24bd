// The per-user settings store in memory.
#pragma once

#include "ports/settings.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fakes {

class FakeSettings final : public ports::Settings {
public:
    std::string get(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view fallback = {}) override;
    void set(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override;
    void remove(std::string_view application, std::string_view section, std::string_view key) override;

    // From now on every set raises `error` (0: works again), as a store without rights would.
    void failWrites(int error) { m_writeError = error; }

    // All values as "application|section|key=value", spelled as first stored, in case-insensitive order.
    [[nodiscard]] std::vector<std::string> all() const;

private:
    struct Value {
        std::string spelling;
        std::string text;
    };
    std::map<std::string, Value> m_values; // by the upper-cased names
    int m_writeError = 0;
};

} // namespace fakes
