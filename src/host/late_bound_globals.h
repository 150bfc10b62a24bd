// The component's own globals object, reached by member names as a host's own would be.
#pragma once

#include "base/late_bound.h"
#include "host/clsQVI_Globals.h"

namespace host {

class LateBoundGlobals final : public base::LateBoundObject {
public:
    clsQVI_Globals values;

    [[nodiscard]] base::Variant get(std::string_view property) override;
    void put(std::string_view property, const base::Variant& value) override;
    base::Variant call(std::string_view method, const std::vector<base::Variant>& arguments) override;

private:
    // Raises 438.
    [[nodiscard]] std::string& find(std::string_view property);
};

} // namespace host
