// Two transports behind one port: WinInet where the user wants it and it can do what the settings ask.
#pragma once

#include "ports/https.h"

#include <memory>

namespace windows {

class SelectedHttps final : public ports::Https {
public:
    // `usual` can do everything; `winInet` has neither SOCKS nor tunnels for plain HTTP. Neither is null.
    SelectedHttps(std::unique_ptr<ports::Https> usual, std::unique_ptr<ports::Https> winInet);

    [[nodiscard]] ports::HttpOutcome perform(const ports::HttpRequest& request, ports::HttpEvents& events) override;
    void cancel() noexcept override;

private:
    std::unique_ptr<ports::Https> m_usual;
    std::unique_ptr<ports::Https> m_winInet;
    ports::Https* m_running = nullptr;
};

} // namespace windows
