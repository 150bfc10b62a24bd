// A cabinet library that sends what a test tells it to, for what no real cabinet brings about.
#pragma once

#include "ports/cabinet_api.h"

#include <functional>
#include <string>

namespace fakes {

class ScriptedCabinetApi final : public ports::CabinetApi {
public:
    // Speaks to the callback for `context`; the result is the walk's Win32 error.
    using Script = std::function<std::uint32_t(std::uint32_t context, ports::CabinetCallback& callback)>;

    std::uint32_t iterate(std::string_view ansiPath, std::uint32_t context, ports::CabinetCallback& callback) override {
        lastPath = ansiPath;
        return script ? script(context, callback) : 0;
    }
    bool isPresent() override { return present; }

    Script script;
    std::string lastPath;
    bool present = true;
};

} // namespace fakes
