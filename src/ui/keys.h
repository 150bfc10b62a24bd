// Character codes of the keys that forms look for.
#pragma once

namespace ui::key {

inline constexpr char16_t kBackspace = 8;
inline constexpr char16_t kReturn = 13;
inline constexpr char16_t kEscape = 27;

} // namespace ui::key
