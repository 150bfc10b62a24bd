// A network whose servers answer as a test says, and a dial-up line that does nothing of its own accord.
#pragma once

#include "ports/network.h"

#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace fakes {

// One scripted request: what the transport tells, in this order, and how it ends.
struct Answer {
    std::vector<std::string> body{}; // block by block
    std::int32_t status = 200;
    std::string reason = "OK";
    std::vector<ports::HttpHeader> headers{};
    ports::HttpOutcome::Kind kind = ports::HttpOutcome::Kind::Answered;
    std::int32_t code = 0;
    std::string description{};
    // Acts while the request runs, before the first byte comes; cancel() in it takes effect at once.
    std::function<void()> meanwhile{};
};

class FakeNetwork final : public ports::Network {
public:
    // Fails the test when a scripted answer was never asked for.
    ~FakeNetwork() override;

    // Answers are given in order, whichever transport asks. A request without one fails the test.
    void willAnswer(Answer answer) { m_answers.push_back(std::move(answer)); }
    void willAnswer(std::string body) { willAnswer(Answer{{std::move(body)}}); }

    // What was asked so far.
    std::vector<ports::HttpRequest> requests;

    // The phone book of every dialer, what was dialled, and the listener of the line that is being dialled: null
    // without one.
    std::vector<std::string> phoneBook;
    std::vector<std::string> dialled;
    ports::DialEvents* line = nullptr;
    bool connected = false;
    int hangUps = 0;
    // Acts at the next dial(), with the listener; then never again.
    std::function<void(ports::DialEvents&)> atDial;

    // The connection that is being dialled stands.
    void connect();

    ports::SocketLayer sockets{"Fake sockets 2.0", true, 65467, 32767, "C:\\windows\\system32\\ws2_32.dll", "Running"};

    [[nodiscard]] std::unique_ptr<ports::Https> createHttps() override;
    [[nodiscard]] std::unique_ptr<ports::Dialer> createDialer() override;
    [[nodiscard]] ports::SocketLayer socketLayer() override { return sockets; }

private:
    friend class FakeHttps;
    std::deque<Answer> m_answers;
};

} // namespace fakes
