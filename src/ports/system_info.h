// The port to what the operating system says of itself.
#pragma once

#include <cstdint>

namespace ports {

// Sizes in bytes, as the system's 32-bit memory status has them: they stop at, or wrap around, what 32 bits can hold,
// and are read as signed numbers.
struct PageFile {
    std::int32_t total = 0;
    std::int32_t available = 0;
};

class SystemInfo {
public:
    SystemInfo() = default;
    SystemInfo(const SystemInfo&) = delete;
    SystemInfo& operator=(const SystemInfo&) = delete;
    virtual ~SystemInfo() = default;

    // The page file at this moment. Never fails.
    [[nodiscard]] virtual PageFile pageFile() = 0;
};

} // namespace ports
