// The few POSIX thread functions that the DLL's libraries call, over the system's own.
#pragma once

namespace windows::com {

// Ends all thread-local values that were made through these functions, those of the host's threads too, and gives their
// slots back. To be called when nothing uses them any more.
void freeThreadKeys() noexcept;

} // namespace windows::com
