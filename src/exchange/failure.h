// Why an exchange got no answer, and how that is told.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace exchange {

struct Failure {
    enum class Kind : std::uint8_t {
        TimedOut,
        Authorisation, // refused for want of a login, most likely by the proxy that is set
        NotFound,
        Supplier,     // connected, or tried to, and got nothing that can be used
        NotConnected, // the network, the name or the transfer failed
    };

    Kind kind = Kind::Supplier;
    std::int32_t number = 0; // see connection::https_error
    std::string description; // the transport's words
    std::string url;
    std::string answerFile; // of Supplier: where the answer was kept; "" when it could not be

    // The user's own settings may be the cause.
    [[nodiscard]] bool settingsMayHelp() const noexcept;
    // What a person is told.
    [[nodiscard]] std::string text() const;
};

// The one place that classifies. `answer`: what the server or a proxy sent, "" when nothing came; `proxy`: one is set.
[[nodiscard]] Failure describeFailure(std::int32_t number, std::string_view description, std::string_view url,
                                      std::string_view answer, bool proxy);

} // namespace exchange
