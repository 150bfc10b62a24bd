// What every transport behind the port must do, on the real ones of this target, against real peers.
#include "contracts/https_contract.h"

#include <gmock/gmock.h>

namespace contracts {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

struct Expected {
    std::string path;
    Kind kind;
    std::int32_t status;
    std::string reason;
    std::string body;
};

TEST_P(HttpsContract, EveryWholeAnswerIsAnAnswerWhateverItsStatus) {
    const std::vector<Expected> rows = {
        {"/ok", Kind::Answered, 200, "OK", "all is well"},
        {"/nothing", Kind::Answered, 200, "OK", ""},
        {"/until-closed", Kind::Answered, 200, "OK", "no length"},
        {"/continue", Kind::Answered, 200, "OK", "late"},
        {"/split", Kind::Answered, 200, "OK", "\xE2\x82\xAC"},
        {"/401", Kind::Answered, 401, "Unauthorized", "Authentication required"},
        {"/404", Kind::Answered, 404, "Not Here", "<h1>404</h1>"},
        {"/407", Kind::Answered, 407, "Proxy Authentication Required", "Authorization failed"},
        {"/503", Kind::Answered, 503, "Service Unavailable", "<SYSDOWN/>"},
        {"/404-without-reason", Kind::Answered, 404, "Not Found", "x"},
        {"/299-without-reason", Kind::Answered, 299, "", "x"},
        {"/slow", Kind::Answered, 200, "OK", "dripping"},
    };
    for (const Expected& row : rows) {
        for (const std::string peer : {"HTTP", "GOOD"}) {
            if (peer == "GOOD" && row.path == "/until-closed") {
                continue; // over TLS an end without a length is an attack
            }
            ports::HttpRequest request = get(at(peer, row.path));
            request.timeout = 1s;
            const ports::HttpOutcome end = perform(request);
            SCOPED_TRACE(peer + " " + row.path + " " + end.description);
            EXPECT_EQ(end.kind, row.kind);
            EXPECT_EQ(end.code, 0);
            EXPECT_EQ(end.status, row.status);
            EXPECT_EQ(end.reason, row.reason);
            EXPECT_THAT(heard->statuses, ElementsAre(row.status));
            EXPECT_EQ(heard->body, row.body);
            EXPECT_FALSE(end.broken);
            EXPECT_EQ(heard->started, 1);
        }
    }
}

TEST_P(HttpsContract, OnlyTheLastAnswersHeadersAreTold) {
    static_cast<void>(perform(get(at("HTTP", "/ok"))));
    EXPECT_THAT(heard->headers,
                ElementsAre("Content-Length=11", "Content-Type=text/plain", "X-Twice=one", "x-twice=two"));
    for (const std::string path : {"/continue", "/split", "/elsewhere"}) {
        static_cast<void>(perform(get(at("HTTP", path))));
        for (const std::string& header : heard->headers) {
            EXPECT_THAT(header, Not(testing::AnyOf(HasSubstr("X-Early"), HasSubstr("X-Trailer"), HasSubstr("X-Hop"))));
        }
    }
}

struct Failure {
    std::string name, url;
    Kind kind;
    bool broken;
    bool onTheWire = false; // only who sees every byte can tell
};

TEST_P(HttpsContract, FailuresAreToldApart) {
    const std::vector<Failure> rows = {
        {"refused", at("REFUSED", "/ok"), Kind::ConnectFailed, false},
        {"empty", at("HTTP", "/empty"), Kind::Failed, false},
        {"reset", at("HTTP", "/reset"), Kind::Failed, false},
        {"reset in the body", at("HTTP", "/reset-in-body"), Kind::Failed, true},
        {"shorter than announced", at("HTTP", "/short"), Kind::Failed, true},
        {"shorter than announced, TLS", at("GOOD", "/short"), Kind::Failed, true},
        {"in the middle of a chunk", at("HTTP", "/short-chunk"), Kind::Failed, true, true},
        {"without the last chunk", at("HTTP", "/no-last-chunk"), Kind::Failed, true, true},
        {"not HTTP", at("HTTP", "/not-http"), Kind::Failed, false},
        {"no such name", "http://no-such-host.invalid/", Kind::Failed, false},
        {"no TLS there", "https://127.0.0.1:" + peerValue("HTTP") + "/ok", Kind::Failed, false},
        {"no address", "", Kind::Failed, false},
        {"no host", "http:///x", Kind::Failed, false},
        {"not the web", "file:///etc/hostname", Kind::Failed, false},
        {"no such way", "gopher://127.0.0.1/", Kind::Failed, false},
        {"redirected to a file", at("HTTP", "/to-file"), Kind::Failed, false},
        {"redirected from a secret place", at("GOOD", "/to-plain"), Kind::Failed, false},
        {"the same, one step later", at("HTTP", "/there-and-back"), Kind::Failed, false},
    };
    for (const Failure& row : rows) {
        if (row.onTheWire && !GetParam().seesTheWire) {
            continue;
        }
        const ports::HttpOutcome end = perform(get(row.url));
        SCOPED_TRACE(row.name + ": " + std::to_string(end.code) + " " + end.description);
        EXPECT_EQ(end.kind, row.kind);
        EXPECT_EQ(end.broken, row.broken);
        EXPECT_NE(end.code, 0);
        EXPECT_NE(end.description, "");
        EXPECT_EQ(end.description.find_first_of("\r\n"), std::string::npos);
    }
    if (!GetParam().useWinInet) {
        // Refused before the body was read: the refusal counts, though the connection is reset in the middle of its
        // page.
        const ports::HttpOutcome end = perform(post(at("HTTP", "/refused-unread"), "<body/>"));
        EXPECT_EQ(end.kind, Kind::Answered) << end.description;
        EXPECT_EQ(end.status, 407);
        EXPECT_EQ(heard->body, "12345");
    }
    expectUsable();
}

struct Silence {
    std::string name, url;
    bool broken;
    int started;
};

TEST_P(HttpsContract, SilenceEndsARequestAtEveryStage) {
    const std::string muteTls = "https://localhost:" + peerValue("MUTE") + "/";
    const std::vector<Silence> rows = {
        {"connecting", at("FULL", "/"), false, 0},
        {"TLS handshake", muteTls, false, 0},
        {"waiting", at("HTTP", "/silent"), false, 1},
        {"in the head", at("HTTP", "/half-head"), GetParam().seesTheWire, 1},
        {"in the body", at("HTTP", "/stalled"), true, 1},
    };
    for (const Silence& row : rows) {
        ports::HttpRequest request = get(row.url);
        request.timeout = 300ms;
        const auto begin = Clock::now();
        const ports::HttpOutcome end = perform(request);
        const auto took = Clock::now() - begin;
        SCOPED_TRACE(row.name + " " + end.description);
        EXPECT_EQ(end.kind, Kind::TimedOut);
        EXPECT_EQ(end.description, "The operation timed out.");
        EXPECT_EQ(end.broken, row.broken);
        EXPECT_EQ(heard->started, row.started);
        EXPECT_GE(took, 290ms);
        EXPECT_LT(took, 2s);
        EXPECT_GE(heard->idles, 3); // messages are handled all the while
    }
    if (!GetParam().seesTheWire) {
        return;
    }
    ports::HttpRequest unread = post(at("HTTP", "/unread"), std::string(20'000'000, 'x'));
    unread.timeout = 500ms;
    EXPECT_EQ(perform(unread).kind, Kind::TimedOut);
}

TEST_P(HttpsContract, ARequestGoesOutAsAsked) {
    const std::string body = "<commands>\xE2\x82\xAC" + std::string(100'000, 'x') + "</commands>";
    ports::HttpRequest request = post(at("HTTP", "/echo"), body);
    request.headers = {{"X-Extra", "a: b"}, {"X-Empty", ""}};
    request.settings.user = "me";
    request.settings.password = "se:cret";
    EXPECT_EQ(perform(request).status, 200);
    const std::string head = heard->body.substr(0, heard->body.find("\r\n\r\n"));
    EXPECT_EQ(heard->body.substr(head.size() + 4), body);
    EXPECT_THAT(head, testing::StartsWith("POST /echo HTTP/1.1\r\n"));
    EXPECT_THAT(head, HasSubstr("Content-Type: text/xml; charset=utf-8"));
    EXPECT_THAT(head, HasSubstr("X-Extra: a: b"));
    EXPECT_THAT(head, HasSubstr("X-Empty:"));
    for (const std::string never : {"Expect:", "Accept-Encoding:", "Cookie:", "Transfer-Encoding:"}) {
        EXPECT_THAT(head, Not(HasSubstr(never)));
    }
    EXPECT_THAT(head, HasSubstr("Authorization: Basic bWU6c2U6Y3JldA=="));

    EXPECT_EQ(perform(get(at("HTTP", "/echo?a=%20b&c"))).status, 200);
    EXPECT_THAT(heard->body, testing::StartsWith("GET /echo?a=%20b&c HTTP/1.1\r\n"));
    EXPECT_THAT(heard->body, Not(HasSubstr("Authorization:")));
    EXPECT_THAT(heard->body, Not(HasSubstr("Content-Type:")));

    ports::HttpRequest smuggled = get(at("HTTP", "/echo"));
    smuggled.headers = {{"X", "1\r\nY: 2"}};
    EXPECT_EQ(perform(smuggled).kind, Kind::Failed);
}

TEST_P(HttpsContract, AGetFollowsFiveRedirectsAPostNone) {
    EXPECT_EQ(perform(get(at("HTTP", "/hops/5"))).status, 200);
    EXPECT_EQ(heard->body, "all is well");
    EXPECT_EQ(heard->started, 1);
    for (const std::string path : {"/hops/6", "/redirect-loop"}) {
        const ports::HttpOutcome end = perform(get(at("HTTP", path)));
        EXPECT_EQ(end.kind, Kind::TooManyRedirects) << path;
        EXPECT_EQ(end.status, 302) << path;
        EXPECT_EQ(end.reason, "Found") << path;
    }
    EXPECT_EQ(perform(get(at("HTTP", "/to-secret"))).status, 200);
    EXPECT_EQ(heard->body, "all is well");

    const ports::HttpOutcome end = perform(post(at("HTTP", "/elsewhere"), "<secret/>"));
    EXPECT_EQ(end.kind, Kind::Answered);
    EXPECT_EQ(end.status, 302);
    EXPECT_EQ(heard->body, "moved");
}

TEST_P(HttpsContract, ACertificateMustBeGood) {
    EXPECT_EQ(perform(get(at("GOOD", "/ok"))).status, 200);
    for (const std::string peer : {"SELF_SIGNED", "EXPIRED", "WRONG_NAME", "UNKNOWN"}) {
        for (int attempt = 0; attempt < 2; ++attempt) {
            const ports::HttpOutcome end = perform(post(at(peer, "/ok"), "<secret/>"));
            SCOPED_TRACE(peer + " " + end.description);
            EXPECT_EQ(end.kind, Kind::Failed);
            EXPECT_NE(end.code, 0);
            EXPECT_NE(end.description, "");
            EXPECT_EQ(heard->started, 0);
            EXPECT_EQ(heard->body, "");
        }
    }
    EXPECT_EQ(perform(get(at("HTTP", "/to-self-signed"))).kind, Kind::Failed);
    EXPECT_EQ(heard->body, "");
    // The name counts, not only the authority.
    EXPECT_EQ(perform(get("https://127.0.0.1:" + peerValue("GOOD") + "/ok")).kind, Kind::Failed);
    expectUsable();
}

} // namespace
} // namespace contracts
