// A tool's surroundings that write down what they are told.
#pragma once

#include "images/tool_run.h"

#include <string>
#include <vector>

namespace images_test {

class RecordingRun final : public images::ToolRun {
public:
    // Ends the run at the n-th question from now; 0 never.
    explicit RecordingRun(int stopAt = 0) : m_stopAt(stopAt) {}

    void caption(std::string_view text) override { captions.emplace_back(text); }
    void line(std::string_view text) override { lines.emplace_back(text); }
    void progress(std::size_t, std::size_t) override {}
    bool proceed() override { return m_stopAt == 0 || --m_stopAt > 0; }

    std::vector<std::string> captions;
    std::vector<std::string> lines;

private:
    int m_stopAt;
};

} // namespace images_test
