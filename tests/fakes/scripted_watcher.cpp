#include "fakes/scripted_watcher.h"

#include <gtest/gtest.h>

#include <utility>

namespace fakes {

ScriptedWatcher::~ScriptedWatcher() {
    for (const Question& question : m_questions) {
        ADD_FAILURE() << "never happened: " << question.begin;
    }
}

void ScriptedWatcher::idle() {
    if (m_atIdle.first > 0 && --m_atIdle.first == 0) {
        m_atIdle.second();
    }
}

void ScriptedWatcher::runStateChanged(const exchange::RunState& state) {
    using Phase = exchange::RunState::Phase;
    using Command = exchange::RunState::Command;
    switch (state.phase) {
    case Phase::Idle: return hear("run ended");
    case Phase::Completed: return hear("run completed");
    case Phase::Cancelled: return hear("run cancelled: " + state.name);
    case Phase::Failed:
        return hear((state.command == Command::Error ? "run failed, error " : "run failed ") + state.name);
    case Phase::Running:
    case Phase::Cancelling: break;
    }
    switch (state.command) {
    case Command::Busy: return hear("busy " + state.name);
    case Command::Done: return hear("done " + state.name);
    case Command::Error: return hear("error " + state.name);
    case Command::None:
    case Command::Starting: break;
    }
}

// A message must be as scripted, letter for letter; of a failure's text, and of an error without one, the beginning is
// enough.
bool ScriptedWatcher::answer(const std::string& question) {
    const std::string scripted = m_questions.empty() ? "nothing" : m_questions.front().begin;
    const bool open = scripted.starts_with("failure ") || scripted.ends_with(':');
    const bool expected = open ? question.starts_with(scripted) : question == scripted;
    if (!expected) {
        ADD_FAILURE() << "unexpected: " << question
                      << "\n  scripted: " << (m_questions.empty() ? "nothing" : m_questions.front().begin);
        return false;
    }
    const Question next = std::move(m_questions.front());
    m_questions.pop_front();
    if (next.action) {
        next.action();
    }
    return next.yes;
}

void ScriptedWatcher::hear(const std::string& event) {
    heard.push_back(event);
    if (meanwhile) {
        meanwhile();
    }
}

} // namespace fakes
