// The version of a program file: four numbers, compared from the left.
#pragma once

#include <array>
#include <compare>
#include <cstdint>
#include <optional>
#include <string_view>

namespace base {

struct FileVersion {
    std::array<std::uint16_t, 4> parts{};

    friend auto operator<=>(const FileVersion&, const FileVersion&) = default;
};

// "7", "7.2" ... "7.2.0.1", blanks around it aside; missing numbers are 0. Nothing for any other text.
[[nodiscard]] std::optional<FileVersion> toFileVersion(std::string_view text) noexcept;

} // namespace base
