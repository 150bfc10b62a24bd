// Memory figures that tests choose.
#pragma once

#include "ports/system_info.h"

namespace fakes {

class FakeSystemInfo final : public ports::SystemInfo {
public:
    ports::PageFile pageFile() override { return memory; }

    ports::PageFile memory{1'000'000'000, 265'996'800};
};

} // namespace fakes
