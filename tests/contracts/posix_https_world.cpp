#include "contracts/https_world.h"

#include "adapters/curl/curl_https.h"

#include <chrono>
#include <cstring>
#include <thread>

#include <dlfcn.h>
#include <netdb.h>

namespace {

constexpr const char* kSlowName = "slow.invalid";

} // namespace

// In front of the system's own, for libcurl too: one name takes long.
extern "C" int getaddrinfo(const char* name, const char* service, const addrinfo* hints, addrinfo** result) {
    if (name != nullptr && std::strcmp(name, kSlowName) == 0) {
        std::this_thread::sleep_for(std::chrono::seconds(2));
        return EAI_NONAME;
    }
    static const auto systems = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return systems(name, service, hints, result);
}

namespace contracts {

std::vector<HttpsWorld> httpsWorlds() {
    HttpsWorld curl;
    curl.name = "Curl";
    curl.create = []() -> std::unique_ptr<ports::Https> {
        return std::make_unique<adapters::CurlHttps>(nullptr, peerValue("CA"));
    };
    curl.slowName = kSlowName;
    return {curl};
}

} // namespace contracts
