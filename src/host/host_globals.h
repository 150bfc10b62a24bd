// The host globals object: the values and options that a host hands over by name.
#pragma once

#include "base/variant.h"

#include <optional>
#include <string>
#include <string_view>

namespace host {

class HostGlobals {
public:
    // As long as no host has given one.
    HostGlobals() = default;
    // `object` may be null.
    explicit HostGlobals(base::ObjectRef object) : m_object(std::move(object)) {}

    [[nodiscard]] explicit operator bool() const noexcept { return m_object != nullptr; }

    // A property. Raises 438 when the object has none of that name, 91 without an object, and what the object raises.
    [[nodiscard]] base::Variant value(std::string_view property) const;
    // As text: Empty and Null read as "". Raises as value() does, and 13 for an object.
    [[nodiscard]] std::string text(std::string_view property) const;
    // Empty, Null, Nothing, a missing property and a missing object all read as Empty; raises whatever else the
    // object raises.
    [[nodiscard]] base::Variant valueIfPresent(std::string_view property) const;
    void put(std::string_view property, const base::Variant& value) const;

    // What the object's GetValue(name) answers; none for Empty, Null, "NOT_FOUND", an object that has no GetValue, and
    // without an object. Raises what the object raises.
    [[nodiscard]] std::optional<std::string> option(std::string_view name) const;

private:
    [[nodiscard]] base::LateBoundObject& object() const;

    base::ObjectRef m_object;
};

} // namespace host
