// Local time as automation counts it.
#pragma once

#include "base/date_time.h"

#include <windows.h>

#include <oleauto.h>

namespace windows {

// Days since 30 December 1899, with the time of day as the fraction. 0 for what is no date.
[[nodiscard]] DATE automationDate(const base::DateTime& time) noexcept;

} // namespace windows
