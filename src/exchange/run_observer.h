// The port to whoever watches an exchange or a run of several: a control that shows it, or a program that waits for it.
#pragma once

#include "xml/xml_document.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace exchange {

// How far a request's answer has come.
struct Transfer {
    std::int64_t bytes = 0;
    std::optional<std::int64_t> total; // as announced; none: not known
    bool complete = false;             // it has come whole
};

// Where a run stands. There is one at a time; everything that is shown of it follows from this.
struct RunState {
    enum class Phase : std::uint8_t { Idle, Running, Cancelling, Completed, Failed, Cancelled };
    enum class Command : std::uint8_t { None, Starting, Busy, Done, Error };

    Phase phase = Phase::Idle;
    std::string name{}; // of the command that `command` is about
    Command command = Command::None;

    [[nodiscard]] bool running() const noexcept { return phase == Phase::Running || phase == Phase::Cancelling; }
};

// Told on the thread that runs. What a method raises ends the routine that told it, unless it says otherwise.
class RunObserver {
public:
    RunObserver() = default;
    RunObserver(const RunObserver&) = delete;
    RunObserver& operator=(const RunObserver&) = delete;
    virtual ~RunObserver() = default;

    // A line for the trace that support reads; beginTrace() starts it afresh. Must not raise, but for 7.
    virtual void trace(const std::string& line) = 0;
    virtual void beginTrace(const std::string& line) = 0;
    // What goes on, for a person.
    virtual void status(const std::string& text) = 0;
    // A request goes out, and then as often as bytes come.
    virtual void transfer(const Transfer& now) = 0;
    // At least every 50 ms while a request runs: the moment to handle waiting messages.
    virtual void idle() = 0;

    // A library (.dll, .ocx) that was downloaded is about to be replaced; is in its place.
    virtual void replacingLibrary(const std::string& path) = 0;
    virtual void libraryPlaced(const std::string& path) = 0;

    // Of a run. The request may be extended, or another put in its place.
    virtual void commandStarts(const std::string& name, std::shared_ptr<xml::XmlDocument>& request) = 0;
    // The server has taken it. `command` is the command document's own element.
    virtual void commandAnswered(const std::string& name, const xml::XmlNode& command,
                                 const std::shared_ptr<xml::XmlDocument>& results) = 0;
    virtual void runCompleted() = 0;
    virtual void runStateChanged(const RunState& state) = 0;
};

} // namespace exchange
