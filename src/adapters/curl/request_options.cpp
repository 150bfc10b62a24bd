#include "adapters/curl/request_options.h"

#include <algorithm>
#include <string_view>

namespace adapters {
namespace {

using ports::Firewall;
using ports::HttpRequest;
using ports::HttpSettings;

// The proxy or the firewall of the settings, whichever is in use.
struct Hop {
    long kind;
    bool tunnel;
    const std::string& host;
    std::int32_t port;
    const std::string& user;
    const std::string& password;
};

Hop hopOf(const HttpSettings& s) {
    if (s.firewallType == Firewall::None) {
        return {CURLPROXY_HTTP, false, s.proxyServer, s.proxyPort, s.proxyUser, s.proxyPassword};
    }
    const long kind = s.firewallType == Firewall::Socks4   ? CURLPROXY_SOCKS4
                      : s.firewallType == Firewall::Socks5 ? CURLPROXY_SOCKS5_HOSTNAME
                                                           : CURLPROXY_HTTP;
    return {
        kind, s.firewallType == Firewall::Tunnel, s.firewallHost, s.firewallPort, s.firewallUser, s.firewallPassword};
}

// Remembers the first option that was not taken.
class Options {
public:
    explicit Options(CURL* easy) noexcept : m_easy(easy) {}

    void set(CURLoption option, long value) noexcept { keep(curl_easy_setopt(m_easy, option, value)); }
    void set(CURLoption option, const char* value) noexcept { keep(curl_easy_setopt(m_easy, option, value)); }
    void set(CURLoption option, const std::string& value) noexcept { set(option, value.c_str()); }
    // Name and password in options of their own, so that a colon is nothing special in either.
    void login(CURLoption user, const std::string& name, CURLoption password, const std::string& secret) noexcept {
        if (!name.empty()) {
            set(user, name);
            set(password, secret);
        }
    }
    [[nodiscard]] CURLcode result() const noexcept { return m_result; }

private:
    void keep(CURLcode result) noexcept {
        if (m_result == CURLE_OK) {
            m_result = result;
        }
    }

    CURL* m_easy;
    CURLcode m_result = CURLE_OK;
};

void setRoute(Options& options, const HttpSettings& settings) {
    // Set even when empty: without them libcurl obeys the environment's proxy variables.
    options.set(CURLOPT_PROXY, "");
    options.set(CURLOPT_NOPROXY, "");
    if (const Hop hop = hopOf(settings); !hop.host.empty()) {
        options.set(CURLOPT_PROXY, hop.host);
        options.set(CURLOPT_PROXYTYPE, hop.kind);
        options.set(CURLOPT_PROXYPORT, static_cast<long>(hop.port));
        options.set(CURLOPT_HTTPPROXYTUNNEL, hop.tunnel ? 1L : 0L);
        options.login(CURLOPT_PROXYUSERNAME, hop.user, CURLOPT_PROXYPASSWORD, hop.password);
    }
    options.set(CURLOPT_HTTPAUTH, static_cast<long>(CURLAUTH_BASIC));
    options.login(CURLOPT_USERNAME, settings.user, CURLOPT_PASSWORD, settings.password);
}

void setMethod(Options& options, CURL* easy, const HttpRequest& request) {
    if (request.method == HttpRequest::Method::Post) {
        // A redirect is not followed: the body holds the user's password.
        options.set(CURLOPT_POST, 1L);
        curl_easy_setopt(easy, CURLOPT_POSTFIELDS, request.body.data());
        curl_easy_setopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
        return;
    }
    options.set(CURLOPT_HTTPGET, 1L);
    options.set(CURLOPT_FOLLOWLOCATION, 1L);
    options.set(CURLOPT_MAXREDIRS, 5L);
}

bool hasLineBreak(std::string_view text) {
    return text.find_first_of("\r\n") != text.npos;
}

} // namespace

std::string requestFault(const HttpRequest& request) {
    const Hop hop = hopOf(request.settings);
    if (!hop.host.empty() && (hop.port < 1 || hop.port > 65'535)) {
        return "The port of the proxy or firewall is not between 1 and 65535: " + std::to_string(hop.port) + ".";
    }
    const auto broken = [](const ports::HttpHeader& h) { return hasLineBreak(h.field) || hasLineBreak(h.value); };
    if (std::any_of(request.headers.begin(), request.headers.end(), broken)) {
        return "A header of the request holds a line break.";
    }
    return {};
}

List headerLines(const HttpRequest& request) {
    List list;
    const auto append = [&list](const std::string& line) {
        curl_slist* longer = curl_slist_append(list.get(), line.c_str());
        if (longer == nullptr) {
            throw base::RuntimeError(base::error::kOutOfMemory);
        }
        static_cast<void>(list.release());
        list.reset(longer);
    };
    append("Expect:"); // none: old servers and proxies do not answer it
    if (request.method == HttpRequest::Method::Post) {
        append("Content-Type: text/xml; charset=utf-8");
    }
    for (const ports::HttpHeader& header : request.headers) {
        // A header without a value is written with a semicolon; a colon would take the header out.
        append(header.value.empty() ? header.field + ";" : header.field + ": " + header.value);
    }
    return list;
}

CURLcode setOptions(CURL* easy, const HttpRequest& request, curl_slist* headers, const std::string& caFile) {
    Options options(easy);
    options.set(CURLOPT_NOSIGNAL, 1L);
    options.set(CURLOPT_QUICK_EXIT, 1L); // a name that is still being looked up does not hold up a cancelled request
    options.set(CURLOPT_URL, request.url);
    options.set(CURLOPT_PROTOCOLS_STR, "http,https");
    options.set(CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    options.set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    // A list of revoked certificates that cannot be had is no reason to refuse: many networks let nobody out to it.
    options.set(CURLOPT_SSL_OPTIONS, static_cast<long>(CURLSSLOPT_REVOKE_BEST_EFFORT));
    // libcurl's own limit for connecting would be 5 minutes.
    options.set(CURLOPT_CONNECTTIMEOUT_MS,
                static_cast<long>(std::clamp<std::int64_t>(request.timeout.count(), 1, 1 << 30)));
    if (!caFile.empty()) {
        options.set(CURLOPT_CAINFO, caFile);
    }
    setRoute(options, request.settings);
    setMethod(options, easy, request);
    curl_easy_setopt(easy, CURLOPT_HTTPHEADER, headers);
    return options.result();
}

} // namespace adapters
