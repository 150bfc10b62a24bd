// A host's automation object that is reached by member names at run time, such as its globals object.
// Real: an IDispatch (windows/com); in memory: tests/fakes.
#pragma once

#include "base/variant.h"

#include <string_view>
#include <vector>

namespace base {

// Names are case-insensitive. A member that the object does not have raises 438; whatever else the object raises
// passes through with its own number, source and description.
class LateBoundObject {
public:
    LateBoundObject() = default;
    LateBoundObject(const LateBoundObject&) = delete;
    LateBoundObject& operator=(const LateBoundObject&) = delete;
    virtual ~LateBoundObject() = default;

    [[nodiscard]] virtual Variant get(std::string_view property) = 0;
    virtual void put(std::string_view property, const Variant& value) = 0;
    virtual Variant call(std::string_view method, const std::vector<Variant>& arguments) = 0;
};

} // namespace base
