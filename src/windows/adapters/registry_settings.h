// The per-user settings store in the registry, in the tree that hosts written in Visual Basic read and write too:
// HKEY_CURRENT_USER\Software\VB and VBA Program Settings\<application>\<section>, one string value per key.
#pragma once

#include "ports/settings.h"

namespace windows {

class RegistrySettings final : public ports::Settings {
public:
    std::string get(std::string_view application, std::string_view section, std::string_view key,
                    std::string_view fallback = {}) override;
    void set(std::string_view application, std::string_view section, std::string_view key,
             std::string_view value) override;
    void remove(std::string_view application, std::string_view section, std::string_view key) override;
};

} // namespace windows
