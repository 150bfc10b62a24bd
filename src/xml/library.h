// What the XML library needs once per process before its first use.
#pragma once

namespace xml {

// Starts the library, silences its global error output, forbids it every file and network access and teaches it
// windows-1252. Cheap after the first call; safe from any thread.
void startLibrary();

// The library reports that it ran out of memory in one place only, and may return half a result. Made before a call,
// asked after it.
class MemoryWatch {
public:
    MemoryWatch() noexcept;
    // Raises 7 when memory ran out since.
    void check() const;
};

} // namespace xml
