// Events on their way from an object of this DLL to the sinks of hosts.
#pragma once

#include "base/date_time.h"
#include "base/variant.h"
#include "windows/com/connection_point.h"
#include "windows/com/variant_conversion.h"

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <span>
#include <string>

namespace windows::com {

// An argument of an event, whose ownership stays here.
class EventArgument {
public:
    // A text, a Boolean or a number.
    explicit EventArgument(const base::Variant& value) { toVariant(value, m_value); }
    explicit EventArgument(const base::DateTime& date);
    explicit EventArgument(Microsoft::WRL::ComPtr<IDispatch> object);

    [[nodiscard]] VARIANT byValue() const noexcept { return m_value.get(); }
    // A sink that changes the argument changes what the functions below give.
    [[nodiscard]] VARIANT byReference() noexcept;

    [[nodiscard]] std::string text() const;
    [[nodiscard]] bool flag() const noexcept { return V_BOOL(&m_value.get()) != VARIANT_FALSE; }
    [[nodiscard]] IDispatch* object() const noexcept { return V_DISPATCH(&m_value.get()); }

private:
    ScopedVariant m_value;
};

// Every sink hears every event, in the order in which they connected; one that leaves meanwhile is not called any more,
// one that joins waits for the next event. A sink without a handler is passed over; any other failure of one is raised,
// with the sink's own number and words, and the sinks after it do not hear of the event.
class EventSource {
public:
    // `owner` is the automation object whose events these are and holds this one. Both outlive it.
    EventSource(IUnknown& owner, ConnectionPoint& connections) noexcept : m_owner(owner), m_connections(connections) {}

    // `event` is its number in the type library; `arguments` are as automation wants them, the last one first. A sink
    // may end this object's life: nothing of it is used afterwards.
    void fire(DISPID event, std::span<VARIANT> arguments = {});
    void fire(DISPID event, const EventArgument& only);

private:
    IUnknown& m_owner;
    ConnectionPoint& m_connections;
};

} // namespace windows::com
