// The messages of errors that the cabinet reader raises.
#pragma once

#include <cstdint>
#include <string_view>

namespace cabinet {

// The class's own error: an action before CabName was set.
inline constexpr std::int32_t kNoCabName = -2147219548;

// The message of a Win32 error code; "Unknown error." for those that the reader does not expect.
[[nodiscard]] std::string_view win32ErrorText(std::uint32_t code) noexcept;

// The message of the class's own error number; "Unknown error." for any other.
[[nodiscard]] std::string_view ownErrorText(std::int32_t number) noexcept;

} // namespace cabinet
