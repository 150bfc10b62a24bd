#include "fakes/fake_network.h"

#include "base/runtime_error.h"

#include <gtest/gtest.h>

namespace fakes {

using Kind = ports::HttpOutcome::Kind;

class FakeHttps final : public ports::Https {
public:
    explicit FakeHttps(FakeNetwork& network) : m_network(network) {}

    ports::HttpOutcome perform(const ports::HttpRequest& request, ports::HttpEvents& events) override {
        if (m_running) {
            throw base::RuntimeError(base::error::kInvalidProcedureCall);
        }
        m_network.requests.push_back(request);
        if (m_network.m_answers.empty()) {
            ADD_FAILURE() << "no answer is scripted for " << request.url;
            return {Kind::ConnectFailed, 7, "Could not connect to server", 0, "", false};
        }
        const Answer answer = std::move(m_network.m_answers.front());
        m_network.m_answers.pop_front();
        m_running = true;
        m_cancelled = false;
        try {
            const ports::HttpOutcome outcome = play(answer, events);
            m_running = false;
            return outcome;
        } catch (...) {
            m_running = false;
            throw;
        }
    }

    void cancel() noexcept override { m_cancelled = m_running; }

private:
    [[nodiscard]] ports::HttpOutcome play(const Answer& answer, ports::HttpEvents& events) const {
        const bool answers = answer.kind == Kind::Answered || !answer.body.empty();
        const ports::HttpOutcome cancelled{
            Kind::Cancelled, 42, "Operation was aborted by an application callback", 0, "", false};
        events.transferStarted();
        if (answer.meanwhile) {
            answer.meanwhile();
        }
        events.idle();
        if (m_cancelled) {
            return cancelled;
        }
        if (answers) {
            events.answered(answer.status);
        }
        for (const ports::HttpHeader& header : answers ? answer.headers : std::vector<ports::HttpHeader>{}) {
            events.header(header.field, header.value);
        }
        for (const std::string& block : answer.body) {
            events.received(block);
            events.idle();
            if (m_cancelled) {
                return cancelled;
            }
        }
        return {answer.kind,
                answer.code,
                answer.description,
                answers ? answer.status : 0,
                answers ? answer.reason : "",
                answer.kind != Kind::Answered && answers};
    }

    FakeNetwork& m_network;
    bool m_running = false;
    bool m_cancelled = false;
};

namespace {

class FakeDialer final : public ports::Dialer {
public:
    explicit FakeDialer(FakeNetwork& network) : m_network(network) {}
    ~FakeDialer() override { forget(); }

    std::vector<std::string> phoneBook() override { return m_network.phoneBook; }
    void dial(std::string_view entry, ports::DialEvents& events) override {
        m_network.dialled.emplace_back(entry);
        m_network.connected = false;
        m_network.line = &events;
        if (const auto act = std::exchange(m_network.atDial, nullptr)) {
            act(events);
        }
    }
    void hangUp() noexcept override {
        ++m_network.hangUps;
        m_network.connected = false;
        m_network.line = nullptr;
    }
    void forget() noexcept override { m_network.line = nullptr; }
    bool connected() const noexcept override { return m_network.connected; }

private:
    FakeNetwork& m_network;
};

} // namespace

FakeNetwork::~FakeNetwork() {
    EXPECT_TRUE(m_answers.empty()) << m_answers.size() << " scripted answers were never asked for";
}

void FakeNetwork::connect() {
    connected = true;
    if (line != nullptr) {
        line->connected();
    }
}

std::unique_ptr<ports::Https> FakeNetwork::createHttps() {
    return std::make_unique<FakeHttps>(*this);
}

std::unique_ptr<ports::Dialer> FakeNetwork::createDialer() {
    return std::make_unique<FakeDialer>(*this);
}

} // namespace fakes
