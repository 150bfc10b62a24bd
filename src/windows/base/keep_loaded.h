// For when a thread of a library may come back into our code after the call that started it has returned.
#pragma once

namespace windows {

// This module stays loaded until the process ends, whoever lets go of it.
void keepCodeLoaded() noexcept;

} // namespace windows
