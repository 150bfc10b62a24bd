// Cabinets through the setup library of Windows, setupapi.dll.
#pragma once

#include "ports/cabinet_api.h"

namespace windows {

// The library is loaded when it is first asked for, so that a system without it is only a missing feature.
class SetupCabinetApi final : public ports::CabinetApi {
public:
    std::uint32_t iterate(std::string_view ansiPath, std::uint32_t context, ports::CabinetCallback& callback) override;
    bool isPresent() override;
};

} // namespace windows
