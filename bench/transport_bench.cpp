// What the transport adds to its library, how long it leaves messages unhandled, and whether it keeps memory. Runs
// among the peers of the tests: tests/peers/with_peers [tools/wine_run] transport_bench
#include "baselines/bare_curl.h"
#include "measure.h"
#include "ports/https.h"

#ifdef _WIN32
#include "windows/network/windows_network.h"
#else
#include "adapters/curl/curl_https.h"
#endif

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

namespace {

constexpr int kRounds = 9;

std::unique_ptr<ports::Https> makeTransport() {
#ifdef _WIN32
    return windows::WindowsNetwork().createHttps();
#else
    return std::make_unique<adapters::CurlHttps>();
#endif
}

class Counter final : public ports::HttpEvents {
public:
    void transferStarted() override {}
    void answered(std::int32_t /*status*/) override {}
    void header(std::string_view /*field*/, std::string_view /*value*/) override {}
    void received(std::string_view piece) override { bytes += piece.size(); }
    void idle() override {
        const auto now = Clock::now();
        longestGap = std::max(longestGap, now - m_last);
        m_last = now;
    }

    using Clock = std::chrono::steady_clock;
    std::size_t bytes = 0;
    Clock::duration longestGap{};

private:
    Clock::time_point m_last = Clock::now();
};

std::string peer(const char* name) {
    const char* port = std::getenv(name);
    return port == nullptr ? "" : port;
}

ports::HttpRequest requestFor(const std::string& url, const std::string& body = "") {
    ports::HttpRequest request;
    request.url = url;
    request.body = body;
    request.method = body.empty() ? ports::HttpRequest::Method::Get : ports::HttpRequest::Method::Post;
    return request;
}

void compare(const char* what, const std::string& url, const std::string& body) {
    const ports::HttpRequest request = requestFor(url, body); // both sides are given a body that is there already
    const auto transport = makeTransport();
    baselines::BareCurl bare;
    std::vector<double> ours;
    std::vector<double> theirs;
    for (int round = 0; round < kRounds; ++round) {
        std::size_t count = 0;
        Counter counter;
        theirs.push_back(bench::seconds([&] { count = bare.transfer(url, body); }));
        ours.push_back(bench::seconds([&] { static_cast<void>(transport->perform(request, counter)); }));
        if (count == 0 || counter.bytes != count) {
            std::printf("%s: %zu and %zu bytes came\n", what, counter.bytes, count);
            std::exit(1);
        }
    }
    const double mine = bench::median(ours) * 1000;
    const double bareTime = bench::median(theirs) * 1000;
    std::printf("%s: %.1f ms, bare libcurl %.1f ms, ratio %.2f\n", what, mine, bareTime, mine / bareTime);
}

void showGap(const char* what, const std::string& url) {
    Counter counter;
    ports::HttpRequest request = requestFor(url);
    request.timeout = std::chrono::seconds(2);
    const ports::HttpOutcome end = makeTransport()->perform(request, counter);
    std::printf("longest time without idle(), %s: %.1f ms (ended with %d %s)\n", what,
                std::chrono::duration<double, std::milli>(counter.longestGap).count(), end.code,
                end.description.c_str());
}

void showMemory(const std::string& url) {
    const auto transport = makeTransport();
    long early = 0;
    const double time = bench::seconds([&] {
        for (int i = 1; i <= 1000; ++i) {
            Counter counter;
            static_cast<void>(transport->perform(requestFor(url, "<command/>"), counter));
            if (i == 100) {
                early = bench::residentKb();
            }
        }
    });
    std::printf("1,000 requests: %.2f ms each, resident after 100: %ld KB, after 1,000: %ld KB\n", time, early,
                bench::residentKb());
}

} // namespace

int main() {
    const std::string http = "http://127.0.0.1:" + peer("QVI_PEER_HTTP");
    compare("GET of 100 MB", http + "/100-megabytes", "");
    compare("POST of 10 MB", http + "/taken", std::string(10'000'000, 'x'));
    showGap("while 100 MB come", http + "/100-megabytes");
    showGap("while nothing comes", http + "/silent");
    showGap("in a TLS handshake with a certificate that is refused", "https://localhost:" + peer("QVI_PEER_UNKNOWN"));
    showGap("looking up a name", "http://no-such-host.invalid/");
    showMemory(http + "/ok");
    return 0;
}
