// The port to the per-user settings store: strings under (application, section, key).
// Real: the registry (windows/adapters); in memory: tests/fakes.
#pragma once

#include <string>
#include <string_view>

namespace ports {

// Names are case-insensitive. Every method may also raise 7 (out of memory).
class Settings {
public:
    Settings() = default;
    Settings(const Settings&) = delete;
    Settings& operator=(const Settings&) = delete;
    virtual ~Settings() = default;

    // The value, or `fallback` when it is missing, when the application, section or key name is empty, or when the
    // stored value cannot be read. A value that is not a string reads as "".
    [[nodiscard]] virtual std::string get(std::string_view application, std::string_view section, std::string_view key,
                                          std::string_view fallback = {}) = 0;

    // Stores a value. An empty application, section or key name, or one with empty parts between
    // backslashes, is refused silently: it would land elsewhere in the tree, under somebody else's name. A store that
    // cannot be written raises 75.
    virtual void set(std::string_view application, std::string_view section, std::string_view key,
                     std::string_view value) = 0;

    // Deletes a value; 5 when there is none.
    virtual void remove(std::string_view application, std::string_view section, std::string_view key) = 0;
};

} // namespace ports
