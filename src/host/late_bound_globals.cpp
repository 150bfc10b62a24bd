#include "host/late_bound_globals.h"

#include "base/runtime_error.h"
#include "base/text.h"

namespace host {

base::Variant LateBoundGlobals::get(std::string_view property) {
    return find(property);
}

void LateBoundGlobals::put(std::string_view property, const base::Variant& value) {
    find(property) = base::toText(value);
}

base::Variant LateBoundGlobals::call(std::string_view method, const std::vector<base::Variant>& arguments) {
    if (base::upperCase(method) != "GETVALUE" || arguments.size() != 1) {
        throw base::RuntimeError(base::error::kNoSuchMember);
    }
    return values.GetValue(arguments.front());
}

std::string& LateBoundGlobals::find(std::string_view property) {
    const std::string name = base::upperCase(property);
    if (name == "GPROFILENUMBER") {
        return values.gProfileNumber;
    }
    if (name == "GQUORVANTISPATH") {
        return values.gQuorVantisPath;
    }
    if (name == "GWEBSERVICE") {
        return values.gWebService;
    }
    if (name == "GSETTINGSTRING") {
        return values.gSettingString;
    }
    throw base::RuntimeError(base::error::kNoSuchMember);
}

} // namespace host
