// How this machine reaches others.
#pragma once

#include "ports/network.h"

namespace windows {

class WindowsNetwork final : public ports::Network {
public:
    [[nodiscard]] std::unique_ptr<ports::Https> createHttps() override;
    [[nodiscard]] std::unique_ptr<ports::Dialer> createDialer() override;
    [[nodiscard]] ports::SocketLayer socketLayer() override;
};

} // namespace windows
