// What the tests of a transport share: a listener that writes down what it is told, requests to the peers.
#pragma once

#include "contracts/https_world.h"

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace contracts {

using Kind = ports::HttpOutcome::Kind;
using Clock = std::chrono::steady_clock;

class Listener final : public ports::HttpEvents {
public:
    void transferStarted() override {
        ++started;
        tell(onStarted);
    }
    void answered(std::int32_t status) override {
        EXPECT_TRUE(headers.empty() && body.empty());
        statuses.push_back(status);
    }
    void header(std::string_view field, std::string_view value) override {
        headers.push_back(std::string(field) + "=" + std::string(value));
        tell(onHeader);
    }
    void received(std::string_view bytes) override {
        body += bytes;
        tell(onReceived);
    }
    void idle() override {
        ++idles;
        tell(onIdle);
    }

    std::function<void()> onStarted, onHeader, onReceived, onIdle; // empty: nothing more
    int started = 0;
    int idles = 0;
    int calls = 0; // of those that have a step above
    std::vector<std::int32_t> statuses;
    std::vector<std::string> headers;
    std::string body;

private:
    void tell(const std::function<void()>& step) {
        if (step) {
            ++calls;
            step();
        }
    }
};

// For messages of the test framework.
inline void PrintTo(const HttpsWorld& world, std::ostream* out) {
    *out << world.name;
}

class HttpsContract : public testing::TestWithParam<HttpsWorld> {
protected:
    void SetUp() override { ASSERT_NE(peerValue("HTTP"), "") << "run this beside its peers: tests/peers/with_peers"; }

    // "http://127.0.0.1:PORT/path" for plain peers; those with certificates are on "localhost".
    [[nodiscard]] static std::string at(const std::string& peer, const std::string& path);
    [[nodiscard]] static ports::HttpRequest get(const std::string& url);
    [[nodiscard]] static ports::HttpRequest post(const std::string& url, std::string body);

    // With a new listener in `heard`, whose steps `prepare` may set.
    ports::HttpOutcome perform(ports::HttpRequest request, const std::function<void()>& prepare = nullptr);
    // The transport still works.
    void expectUsable();

    std::unique_ptr<ports::Https> https = GetParam().create();
    std::optional<Listener> heard;
};

} // namespace contracts
