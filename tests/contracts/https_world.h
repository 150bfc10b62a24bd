// One transport with the peers that it talks to (tests/peers/with_peers).
#pragma once

#include "ports/https.h"

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace contracts {

struct HttpsWorld {
    std::string name;
    std::unique_ptr<ports::Https> (*create)() = nullptr;
    bool useWinInet = false;     // what its requests ask for
    bool socksAndTunnels = true; // it can go through these
    // It knows every byte that goes or comes. A library in between hides half a head, a missing last chunk, and how far
    // a body has gone out.
    bool seesTheWire = true;
    std::string slowName; // a host whose name takes seconds to look up; "" where that cannot be had
};

// The real transports of this target, in which the peers' authority is trusted.
[[nodiscard]] std::vector<HttpsWorld> httpsWorlds();

// A value of the peers' environment; "" without them.
[[nodiscard]] std::string peerValue(const std::string& name);
[[nodiscard]] std::int32_t peerPort(const std::string& name);

} // namespace contracts
