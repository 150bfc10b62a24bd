// What every transport must do when the listener cancels, raises or asks for more from inside an event.
#include "base/error_number.h"
#include "contracts/https_contract.h"

namespace contracts {
namespace {

using namespace std::chrono_literals;

// Longer than a busy machine takes, and far shorter than any peer here is silent.
constexpr auto kAtOnce = 5s;

using Step = std::function<void()> Listener::*;

struct Stage {
    std::string name;
    ports::HttpRequest request;
    Step event; // that the listener acts in
    bool afterStart = false;
};

class HttpsEvents : public HttpsContract {
protected:
    [[nodiscard]] static std::vector<Stage> stages() {
        std::vector<Stage> rows = {
            {"connecting", get(at("FULL", "/")), &Listener::onIdle},
            {"TLS handshake", get("https://localhost:" + peerValue("MUTE") + "/"), &Listener::onIdle},
            {"request goes out", get(at("HTTP", "/ok")), &Listener::onStarted},
            {"uploading", post(at("HTTP", "/unread"), std::string(20'000'000, 'x')), &Listener::onIdle, true},
            {"waiting", get(at("HTTP", "/silent")), &Listener::onIdle, true},
            {"header", get(at("HTTP", "/ok")), &Listener::onHeader},
            {"body", get(at("GOOD", "/endless")), &Listener::onReceived},
            {"between pieces of the body", get(at("HTTP", "/endless")), &Listener::onIdle, true},
        };
        if (!GetParam().slowName.empty()) {
            rows.push_back({"looking up a name", get("http://" + GetParam().slowName), &Listener::onIdle});
        }
        return rows;
    }
    // Performs the stage's request; the listener does `act` in the event, and writes down when.
    ports::HttpOutcome performUntil(const Stage& stage, const std::function<void()>& act) {
        return perform(stage.request, [&] {
            (*heard).*stage.event = [&] {
                if (!stage.afterStart || heard->started > 0) {
                    ++acted;
                    actedAt = Clock::now();
                    act();
                }
            };
        });
    }

    int acted = 0;
    Clock::time_point actedAt;
};

TEST_P(HttpsEvents, CancelEndsARequestAtOnceAtEveryStage) {
    https->cancel(); // without a request it does nothing
    for (const Stage& stage : stages()) {
        SCOPED_TRACE(stage.name);
        acted = 0;
        const ports::HttpOutcome end = performUntil(stage, [&] { https->cancel(); });
        EXPECT_LT(Clock::now() - actedAt, kAtOnce);
        EXPECT_EQ(end.kind, Kind::Cancelled) << end.description;
        EXPECT_EQ(acted, 1);
        expectUsable();
    }
    const auto begin = Clock::now();
    https = nullptr;
    EXPECT_LT(Clock::now() - begin, kAtOnce); // whatever is still being looked up
}

TEST_P(HttpsEvents, WhatAnEventRaisesComesOut) {
    for (const Stage& stage : stages()) {
        SCOPED_TRACE(stage.name);
        acted = 0;
        EXPECT_EQ(
            base::errorNumber([&] { static_cast<void>(performUntil(stage, [] { throw base::RuntimeError(61); })); }),
            61);
        EXPECT_LT(Clock::now() - actedAt, kAtOnce);
        EXPECT_EQ(acted, 1);
        expectUsable();
    }
}

TEST_P(HttpsEvents, OnlyOneRequestRunsAtATime) {
    const Stage waiting{"waiting", get(at("HTTP", "/silent")), &Listener::onIdle, true};
    const ports::HttpOutcome end = performUntil(waiting, [&] {
        Listener second;
        EXPECT_EQ(base::errorNumber([&] { static_cast<void>(https->perform(get(at("HTTP", "/ok")), second)); }), 5);
        EXPECT_EQ(second.started, 0);
        const auto other = GetParam().create(); // another object's requests are its own
        EXPECT_EQ(other->perform(get(at("HTTP", "/ok")), second).status, 200);
        https->cancel();
    });
    EXPECT_EQ(end.kind, Kind::Cancelled);
    expectUsable();
}

INSTANTIATE_TEST_SUITE_P(Real, HttpsEvents, testing::ValuesIn(httpsWorlds()),
                         [](const auto& row) { return row.param.name; });

} // namespace
} // namespace contracts
