// The system's memory figures.
#pragma once

#include "ports/system_info.h"

namespace windows {

class MemoryStatus final : public ports::SystemInfo {
public:
    ports::PageFile pageFile() override;
};

} // namespace windows
