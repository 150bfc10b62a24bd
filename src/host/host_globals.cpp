#include "host/host_globals.h"

#include "base/late_bound.h"
#include "base/runtime_error.h"

namespace host {
namespace {

bool isNothing(const base::Variant& value) {
    if (const auto* const object = std::get_if<base::ObjectRef>(&value)) {
        return *object == nullptr;
    }
    return std::holds_alternative<base::Empty>(value) || std::holds_alternative<base::Null>(value);
}

// What `ask` answers, or Empty when the object has no such member.
template <typename Ask>
base::Variant unlessMissing(Ask&& ask) {
    try {
        base::Variant answer = ask();
        return isNothing(answer) ? base::Variant{} : answer;
    } catch (const base::RuntimeError& e) {
        if (e.number() != base::error::kNoSuchMember) {
            throw;
        }
        return {};
    }
}

} // namespace

base::Variant HostGlobals::value(std::string_view property) const {
    return object().get(property);
}

std::string HostGlobals::text(std::string_view property) const {
    const base::Variant answer = value(property);
    return isNothing(answer) ? std::string() : base::toText(answer);
}

base::Variant HostGlobals::valueIfPresent(std::string_view property) const {
    return m_object ? unlessMissing([&] { return m_object->get(property); }) : base::Variant{};
}

void HostGlobals::put(std::string_view property, const base::Variant& value) const {
    object().put(property, value);
}

std::optional<std::string> HostGlobals::option(std::string_view name) const {
    if (!m_object) {
        return std::nullopt;
    }
    const base::Variant answer = unlessMissing([&] { return m_object->call("GetValue", {std::string(name)}); });
    if (isNothing(answer)) {
        return std::nullopt;
    }
    std::string text = base::toText(answer);
    return text == "NOT_FOUND" ? std::nullopt : std::optional(std::move(text));
}

base::LateBoundObject& HostGlobals::object() const {
    if (!m_object) {
        throw base::RuntimeError(base::error::kObjectNotSet);
    }
    return *m_object;
}

} // namespace host
