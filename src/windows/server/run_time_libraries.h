// The compiler's run-time libraries inside the DLL. They count on living as long as the process.
#pragma once

namespace windows::com {

// To be called when the DLL is about to be unloaded while the process goes on. When the last static object has gone,
// all is given back that these libraries would keep for the rest of the process.
void letRunTimeLibrariesGo() noexcept;

} // namespace windows::com
