// The component's own host globals object: a small set of the values, under the names that hosts use.
#pragma once

#include "base/variant.h"

#include <string>

namespace host {

class clsQVI_Globals {
public:
    std::string gProfileNumber;
    std::string gQuorVantisPath;
    std::string gWebService;
    std::string gSettingString;

    // Empty, whatever the name: options come only from a host's own globals object.
    [[nodiscard]] base::Variant GetValue(const base::Variant& i) const {
        static_cast<void>(i);
        return base::Empty{};
    }
};

} // namespace host
