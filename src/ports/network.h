// The port to how this machine reaches others: makes the transports and dialers, and says what its sockets are.
#pragma once

#include "ports/dialer.h"
#include "ports/https.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ports {

// The socket library in the words of its own start-up.
struct SocketLayer {
    std::string description;
    bool loaded = false;
    std::int32_t maxDatagramSize = 0; // bytes
    std::int32_t maxSockets = 0;
    std::string path; // of the library's file
    std::string status;
};

class Network {
public:
    Network() = default;
    Network(const Network&) = delete;
    Network& operator=(const Network&) = delete;
    virtual ~Network() = default;

    // Each control that talks to a server has a transport of its own. Never null.
    [[nodiscard]] virtual std::unique_ptr<Https> createHttps() = 0;
    [[nodiscard]] virtual std::unique_ptr<Dialer> createDialer() = 0;
    // Never fails; `loaded` is false where there are no sockets.
    [[nodiscard]] virtual SocketLayer socketLayer() = 0;
};

} // namespace ports
