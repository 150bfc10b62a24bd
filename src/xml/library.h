// What the XML library needs once per process before its first use.
#pragma once

namespace xml {

// Starts the library, silences its global error output, forbids it every file and network access and teaches it
// windows-1252. Cheap after the first call; safe from any thread.
void startLibrary();

// The library does not always say that it ran out of memory, and may return half a result then. So its allocations are
// watched: make one of these before a call, ask it after.
class MemoryWatch {
public:
    MemoryWatch() noexcept;
    // Raises 7 when an allocation of this thread failed since.
    void check() const;
};

} // namespace xml
