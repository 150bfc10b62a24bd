// Automation values as the portable core sees them.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <variant>

namespace base {

class LateBoundObject; // base/late_bound.h; here a value need only know that it may be an object

struct Empty {
    friend bool operator==(Empty, Empty) = default;
};
struct Null {
    friend bool operator==(Null, Null) = default;
};

using ObjectRef = std::shared_ptr<LateBoundObject>;

// ObjectRef may be null: automation's Nothing.
using Variant = std::variant<Empty, Null, bool, std::int32_t, double, std::string, ObjectRef>;

// Converted to a String as automation does: Empty gives "", True/False their English names, numbers without padding.
// Null raises 94 "Invalid use of Null", an object 13.
[[nodiscard]] std::string toText(const Variant& value);

// The object that a value is; null for Nothing, Empty and Null. Raises 13 for anything else.
[[nodiscard]] ObjectRef toObject(const Variant& value);

// Equality of two values under automation's rules: Empty equals "", 0 and False; strings compare binary; a string and
// a number are never equal; Null equals nothing; objects by identity.
[[nodiscard]] bool equals(const Variant& left, const Variant& right);

} // namespace base
