// The port to whoever answers the questions of an exchange: a person in front of dialogs, or a policy where there is
// none.
#pragma once

#include "base/runtime_error.h"
#include "exchange/failure.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace exchange {

// In upper case, as the server compares it.
struct Login {
    std::string password;
    std::string newPassword; // "": it stays
};

// Called on the thread that runs, and returns when the question is answered. What a method raises ends the exchange.
class Dialogues {
public:
    enum class Next : std::uint8_t { Repeat, GiveUp };

    Dialogues() = default;
    Dialogues(const Dialogues&) = delete;
    Dialogues& operator=(const Dialogues&) = delete;
    virtual ~Dialogues() = default;

    // Something that the user should know: the server's words, or that its answer was none.
    virtual void tell(const std::string& text) = 0;
    // The error that ended the routine of this name.
    virtual void report(std::string_view routine, const base::RuntimeError& error) = 0;
    // None: the user gave up.
    [[nodiscard]] virtual std::optional<Login> logIn() = 0;

    // After a failure. In this order, as far as they apply: the alternate address, where there is one ...
    [[nodiscard]] virtual bool useAlternateAddress() = 0;
    // ... then what else can be done about it; dial(), where the user lets the program dial: true once it is connected.
    [[nodiscard]] virtual Next afterFailure(const Failure& failure) = 0;
    [[nodiscard]] virtual bool dial() = 0;
    // Hangs up what was dialled here, and closes the connection settings. Must not raise.
    virtual void disconnect() = 0;
    virtual void offerToDisconnect() = 0;

    // A set-up program that was fetched is about to be looked for and started; starts now, and may replace what is
    // open.
    virtual void announceSetUp() = 0;
    virtual void setUpStarts() = 0;
};

} // namespace exchange
