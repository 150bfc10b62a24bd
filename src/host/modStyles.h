// Colours by the names that hosts use in their settings.
#pragma once

#include "base/variant.h"
#include "ui/color.h"

#include <cstdint>

namespace host {

// The colour of that name, in any letter case, as automation counts colours: a signed number, negative for the system's
// own (ui/color.h). `otherwise` for any other name, and for none (Empty, Null). Raises 13 for an object.
[[nodiscard]] std::int32_t colorFromName(const base::Variant& name,
                                         std::int32_t otherwise = static_cast<std::int32_t>(ui::color::kLight3d));

} // namespace host
