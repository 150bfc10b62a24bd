// Program files in Windows.
#pragma once

#include "ports/programs.h"

namespace windows {

// Needs COM on the thread for start(), as some of the shell's parts do.
class WindowsPrograms final : public ports::Programs {
public:
    [[nodiscard]] std::optional<base::FileVersion> version(std::string_view path) override;
    [[nodiscard]] ports::Signature signature(std::string_view path) override;
    [[nodiscard]] std::unique_ptr<ports::HeldFile> hold(std::string_view path) override;
    void start(std::string_view path) override;
};

} // namespace windows
