// The functions of the remote access service, loaded from the system's own folder, and what it says in words.
#pragma once

#include "windows/base/handles.h"

#include <string>
#include <string_view>

#include <windows.h>

#include <ras.h>

namespace windows {

class RasLibrary {
public:
    RasLibrary();

    // All functions are there.
    [[nodiscard]] bool isComplete() const noexcept;

    decltype(&RasEnumEntriesW) enumEntries = nullptr;
    decltype(&RasGetEntryDialParamsW) getEntryDialParams = nullptr;
    decltype(&RasDialW) dial = nullptr;
    decltype(&RasHangUpW) hangUp = nullptr;
    decltype(&RasGetConnectStatusW) getConnectStatus = nullptr;
    decltype(&RasGetErrorStringW) getErrorString = nullptr;

private:
    UniqueModule m_module;
};

// What the service says to one of its codes, or the system to one of its own; one line. `library` may be null.
[[nodiscard]] std::string rasErrorText(const RasLibrary* library, DWORD failure);

// What a line that is being dialled does.
[[nodiscard]] std::string_view rasStateText(RASCONNSTATE state) noexcept;

} // namespace windows
