// A run: from the login, through the commands one by one, to its end.
#pragma once

#include "exchange/engine.h"
#include "xml/xml_document.h"

#include <cstddef>
#include <memory>
#include <string>

namespace exchange {

class Run {
public:
    // The engine outlives the run, which holds the commands whatever a handler puts in their place meanwhile; null
    // raises 91 once somebody has logged in.
    Run(Engine& engine, std::shared_ptr<Commands> commands, Engine::Ticked ticked);
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;
    ~Run() = default;

    void perform();

private:
    using Phase = RunState::Phase;
    struct Command {
        std::size_t index; // among the document's commands
        xml::XmlNode element;
        std::string name;
        std::string posted{}; // what went out last
        std::shared_ptr<xml::XmlDocument> results = nullptr;
    };

    [[nodiscard]] Phase go();
    [[nodiscard]] bool logIn(); // false: the user gave up
    void requireCommands() const;
    [[nodiscard]] Phase sendCommands();
    [[nodiscard]] bool wanted(const Command& command) const;
    [[nodiscard]] Phase sendCommand(Command& command); // Running: the next one may follow
    void startCommand(Command& command);
    [[nodiscard]] bool sendAndReceive(Command& command);
    [[nodiscard]] bool takeRedo(Command& command);
    void completeCommand(const Command& command);
    void follow();
    void conclude(Phase end);
    void show(const Command& command, RunState::Command state);

    Engine& m_engine;
    Session& m_session;
    RunObserver& m_observer;
    std::shared_ptr<Commands> m_commands;
    Engine::Ticked m_ticked;
    std::shared_ptr<xml::XmlDocument> m_request; // one command at a time; may hold all links of a shop
};

} // namespace exchange
