#include "contracts/https_contract.h"

#include <cstdlib>
#include <utility>

namespace contracts {

std::string peerValue(const std::string& name) {
    const char* value = std::getenv(("QVI_PEER_" + name).c_str());
    return value == nullptr ? "" : value;
}

std::int32_t peerPort(const std::string& name) {
    return std::atoi(peerValue(name).c_str());
}

std::string HttpsContract::at(const std::string& peer, const std::string& path) {
    const bool plain = peer == "HTTP" || peer == "FULL" || peer == "REFUSED";
    return (plain ? "http://127.0.0.1:" : "https://localhost:") + peerValue(peer) + path;
}

ports::HttpRequest HttpsContract::get(const std::string& url) {
    ports::HttpRequest request;
    request.url = url;
    request.timeout = std::chrono::seconds(20);
    return request;
}

ports::HttpRequest HttpsContract::post(const std::string& url, std::string body) {
    ports::HttpRequest request = get(url);
    request.method = ports::HttpRequest::Method::Post;
    request.body = std::move(body);
    return request;
}

ports::HttpOutcome HttpsContract::perform(ports::HttpRequest request, const std::function<void()>& prepare) {
    heard.emplace();
    if (prepare) {
        prepare();
    }
    request.useWinInet = GetParam().useWinInet;
    return https->perform(request, *heard);
}

void HttpsContract::expectUsable() {
    EXPECT_EQ(perform(get(at("HTTP", "/ok"))).status, 200);
    EXPECT_EQ(heard->body, "all is well");
}

INSTANTIATE_TEST_SUITE_P(Real, HttpsContract, testing::ValuesIn(httpsWorlds()),
                         [](const auto& row) { return row.param.name; });

} // namespace contracts
