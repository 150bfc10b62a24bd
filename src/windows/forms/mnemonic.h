// The letter that works a control together with Alt: in its text the one behind an "&".
#pragma once

#include "ui/container.h"

#include <string>
#include <string_view>

namespace windows {

// In upper case; 0 when the text marks none.
[[nodiscard]] char16_t mnemonicOf(std::string_view text);

// The letters of the container's buttons and check boxes that can be pressed now, in upper case.
[[nodiscard]] std::u16string mnemonicsOf(const ui::Container& container);
// The one with this letter, in either case; null when there is none.
[[nodiscard]] const ui::Control* pressedBy(char16_t letter, const ui::Container& container);

[[nodiscard]] char16_t upperCase(char16_t letter);

} // namespace windows
