// Somebody who answers an exchange's questions as a test says, and writes down what he is told. Whatever no script
// expects fails the test.
#pragma once

#include "exchange/dialogues.h"
#include "exchange/run_observer.h"

#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace fakes {

class ScriptedWatcher final : public exchange::Dialogues, public exchange::RunObserver {
public:
    // Fails the test when something scripted never happened.
    ~ScriptedWatcher() override;

    // Questions and messages, in order. The next one must be this one; `action` acts first.
    using Action = std::function<void()>;
    void whenTold(const std::string& text) { expect("tell " + text); }
    // "Error in <routine>:<description>"; without the description, any.
    void whenReported(const std::string& text) { expect("report " + text); }
    void whenLogin(const exchange::Login& login) { m_login = login, expect("login", true); }
    void whenLoginCancelled() { expect("login", false); }
    void whenAlternate(bool yes) { expect("alternate?", yes); }
    // A failure whose text begins so.
    void whenFailing(const std::string& text, Next next = Next::GiveUp, Action action = {}) {
        expect("failure " + text, next == Next::Repeat, std::move(action));
    }
    void whenDialling(bool connected) { expect("dial", connected); }
    void whenSetUpIsDue() { expect("set-up is due"); }

    // What was told besides: "starts a", "answered a", "completed", "status x", "replacing p", "placed p",
    // "disconnect", "offer to disconnect", "set-up starts", "busy a", "done a", "error a", "run failed" ...
    std::vector<std::string> heard;
    std::string traced; // line by line, from the last beginTrace() on
    exchange::Transfer lastTransfer;
    exchange::Failure lastFailure;
    std::shared_ptr<xml::XmlDocument> request; // of the last command that started
    // Acts whenever something is written down in `heard`, and at the n-th idle() from now.
    std::function<void()> meanwhile;
    void atIdle(int n, Action action) { m_atIdle = {n, std::move(action)}; }

    void tell(const std::string& text) override { answer("tell " + text); }
    void report(std::string_view routine, const base::RuntimeError& error) override {
        answer("report Error in " + std::string(routine) + ":" + error.description());
    }
    [[nodiscard]] std::optional<exchange::Login> logIn() override {
        return answer("login") ? std::optional(m_login) : std::nullopt;
    }
    [[nodiscard]] bool useAlternateAddress() override { return answer("alternate?"); }
    [[nodiscard]] Next afterFailure(const exchange::Failure& failure) override {
        lastFailure = failure;
        return answer("failure " + failure.text()) ? Next::Repeat : Next::GiveUp;
    }
    [[nodiscard]] bool dial() override { return answer("dial"); }
    void disconnect() override { hear("disconnect"); }
    void offerToDisconnect() override { hear("offer to disconnect"); }
    void announceSetUp() override { answer("set-up is due"); }
    void setUpStarts() override { hear("set-up starts"); }

    void trace(const std::string& line) override { traced += line + "\n"; }
    void beginTrace(const std::string& line) override { traced = line + "\n"; }
    void status(const std::string& text) override { hear("status " + text); }
    void transfer(const exchange::Transfer& now) override { lastTransfer = now; }
    void idle() override;
    void replacingLibrary(const std::string& path) override { hear("replacing " + path); }
    void libraryPlaced(const std::string& path) override { hear("placed " + path); }
    void commandStarts(const std::string& name, std::shared_ptr<xml::XmlDocument>& document) override {
        request = document;
        hear("starts " + name);
    }
    void commandAnswered(const std::string& name, const xml::XmlNode&,
                         const std::shared_ptr<xml::XmlDocument>&) override {
        hear("answered " + name);
    }
    void runCompleted() override { hear("completed"); }
    void runStateChanged(const exchange::RunState& state) override;

private:
    struct Question {
        std::string begin;
        bool yes;
        Action action;
    };

    void expect(std::string begin, bool yes = false, Action action = {}) {
        m_questions.push_back({std::move(begin), yes, std::move(action)});
    }
    bool answer(const std::string& question);
    void hear(const std::string& event);

    std::deque<Question> m_questions;
    exchange::Login m_login;
    std::pair<int, Action> m_atIdle{0, {}};
};

} // namespace fakes
