// The port to the platform's dial-up connections. Real: windows/adapters (remote access service); scripted:
// tests/fakes/fake_network.h.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace ports {

// Told of while a connection is dialled, from inside the message loop of the thread that dials. Must not raise.
class DialEvents {
public:
    DialEvents() = default;
    DialEvents(const DialEvents&) = delete;
    DialEvents& operator=(const DialEvents&) = delete;
    virtual ~DialEvents() = default;

    // A step of the way, with what the device says of it. `number` 0 says nothing.
    virtual void progress(std::int32_t number, std::string_view text1, std::string_view text2, std::string_view text3,
                          std::string_view text4) noexcept = 0;
    virtual void status(std::int32_t code, std::string_view description) noexcept = 0;
    // The line is not dialled any more.
    virtual void error(std::int32_t code, std::string_view description) noexcept = 0;
    // The connection stands.
    virtual void connected() noexcept = 0;
};

class Dialer {
public:
    Dialer() = default;
    Dialer(const Dialer&) = delete;
    Dialer& operator=(const Dialer&) = delete;
    // Hangs up a line that is still being dialled; a connection that stands stays.
    virtual ~Dialer() = default;

    // The names in the user's phone book. Empty where there is none, or no dial-up at all.
    [[nodiscard]] virtual std::vector<std::string> phoneBook() = 0;

    // Begins to dial and returns; what happens then comes as events, also that dialling could not even begin. A line
    // that this object dials already is hung up first. `events` (not owned) is told until hangUp() or forget().
    virtual void dial(std::string_view entry, DialEvents& events) = 0;

    // Stops dialling, or ends the connection that this object made; nothing is told any more. Without one it does
    // nothing.
    virtual void hangUp() noexcept = 0;

    // Tells the listener of dial() nothing any more; the line stays as it is.
    virtual void forget() noexcept = 0;

    // A connection made by this object stands.
    [[nodiscard]] virtual bool connected() const noexcept = 0;
};

} // namespace ports
