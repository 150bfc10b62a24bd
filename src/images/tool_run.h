// What a tool for the whole list tells its surroundings while it runs, and how it learns that it is to stop.
#pragma once

#include <cstddef>
#include <string_view>

namespace images {

class ToolRun {
public:
    ToolRun() = default;
    ToolRun(const ToolRun&) = delete;
    ToolRun& operator=(const ToolRun&) = delete;
    virtual ~ToolRun() = default;

    // What the tool is doing now.
    virtual void caption(std::string_view text) = 0;
    // A line for the list of messages.
    virtual void line(std::string_view text) = 0;
    // `done` of `total` items; a total of 0 means that the length is unknown.
    virtual void progress(std::size_t done, std::size_t total) = 0;
    // Lets windows repaint and buttons work; called once an item. False when the user wants the run to end: the tool
    // then ends as it does at the end of its input.
    [[nodiscard]] virtual bool proceed() = 0;
};

} // namespace images
