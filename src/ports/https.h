// The port to the web: one request at a time over HTTP or HTTPS, straight, through a proxy, or through a firewall.
// Real: adapters/curl and windows/adapters (WinInet); scripted: tests/fakes/fake_network.h. One contract suite for all.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ports {

// What goes between this machine and the server; the numbers are the ones that logs and support know.
enum class Firewall : std::int32_t { None = 0, Tunnel = 1, Socks4 = 2, Socks5 = 3 };

// How the server is reached, and as whom. An empty host means none; an empty user, that no login is offered.
struct HttpSettings {
    std::string proxyServer;
    std::int32_t proxyPort = 80;
    std::string proxyUser;
    std::string proxyPassword;

    Firewall firewallType = Firewall::None;
    std::string firewallHost;
    std::int32_t firewallPort = 80;
    std::string firewallUser;
    std::string firewallPassword;

    std::string user; // for the server itself: Basic authentication
    std::string password;

    friend bool operator==(const HttpSettings&, const HttpSettings&) = default;
};

struct HttpHeader {
    std::string field;
    std::string value;
};

struct HttpRequest {
    enum class Method : std::uint8_t { Get, Post };

    Method method = Method::Get;
    std::string url;                 // absolute, http or https; blanks are encoded already
    std::string body;                // of a Post; sent as "text/xml; charset=utf-8"
    std::vector<HttpHeader> headers; // beside the transport's own
    HttpSettings settings;
    bool useWinInet = false;                    // the platform's own library, where it can do what the settings ask
    std::chrono::milliseconds timeout{600'000}; // for connecting, and without a byte in either direction after that
};

// How a request ended. An answer counts as whole whatever its status: an error page is an answer.
struct HttpOutcome {
    enum class Kind : std::uint8_t {
        // An answer came, whole. Also a proxy's refusal of a tunnel, whose status and reason these are; and a refusal
        // (400 and above) whose page was cut off, as happens when a proxy refuses without reading the request.
        Answered,
        ConnectFailed, // refused, or the machine cannot be reached
        TimedOut,
        Cancelled,        // by cancel(), and by nothing else
        TooManyRedirects, // status and reason are those of the last one
        Failed, // everything else: name not found, bad address, certificate refused, broken off, truncated, no HTTP
    };

    Kind kind = Kind::Answered;
    std::int32_t code = 0;   // the library's own number of a failure; 0 for an answer
    std::string description; // the library's text of a failure, one line; "" for an answer
    std::int32_t status = 0; // of the last answer that began, 200 and so on; 0 when none did
    std::string reason;      // its text: "OK", "Not Found"; a standard one where the server sends none
    // The server had begun to answer when the request failed.
    bool broken = false;
};

// Told of while a request runs, on the thread that performs it. What a method raises aborts the request and comes out
// of perform().
class HttpEvents {
public:
    HttpEvents() = default;
    HttpEvents(const HttpEvents&) = delete;
    HttpEvents& operator=(const HttpEvents&) = delete;
    virtual ~HttpEvents() = default;

    // The request goes out. Once; not again for a redirect or a second try with a login.
    virtual void transferStarted() = 0;
    // The server's last answer begins, with this status: 200 and so on. Before its headers.
    virtual void answered(std::int32_t status) = 0;
    // One header line of that answer: not of redirects, of a demand for a login that is then given, or of
    // a proxy's answer to a tunnel.
    virtual void header(std::string_view field, std::string_view value) = 0;
    // Bytes of the body as they come, of the same answer only.
    virtual void received(std::string_view bytes) = 0;
    // At least every 50 ms, and as often as bytes move in either direction: the moment to handle waiting messages.
    virtual void idle() = 0;
};

// Redirects: a Get follows up to 5, among http and https, never from https to http; a Post follows none. Certificates
// are verified, without an exception. The environment's proxy variables are not obeyed. No cookies, no cache, no
// compression.
class Https {
public:
    Https() = default;
    Https(const Https&) = delete;
    Https& operator=(const Https&) = delete;
    virtual ~Https() = default;

    // Returns when the transfer is over. Raises 5 while another request of this object runs, 7, and what events raise;
    // every failure of the transfer itself is an outcome. The object may be destroyed only after it has returned.
    [[nodiscard]] virtual HttpOutcome perform(const HttpRequest& request, HttpEvents& events) = 0;

    // Ends a running request at once, at whatever stage; called from inside an event. Without one it does nothing.
    virtual void cancel() noexcept = 0;
};

} // namespace ports
