// A run of a tool for the whole list that nobody watches and nobody ends.
#pragma once

#include "images/tool_run.h"

#include <cstddef>
#include <string_view>

namespace fakes {

class SilentRun final : public images::ToolRun {
public:
    void caption(std::string_view) override {}
    void line(std::string_view) override {}
    void progress(std::size_t, std::size_t) override {}
    [[nodiscard]] bool proceed() override { return true; }
};

} // namespace fakes
