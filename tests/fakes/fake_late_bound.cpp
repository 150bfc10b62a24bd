#include "fakes/fake_late_bound.h"

#include "base/runtime_error.h"
#include "base/text.h"

#include <utility>

namespace fakes {
namespace {

template <typename Members>
auto& memberOf(Members& members, const std::string& key) {
    const auto found = members.find(key);
    if (found == members.end()) {
        throw base::RuntimeError(base::error::kNoSuchMember);
    }
    return found->second;
}

} // namespace

void FakeLateBound::addProperty(std::string_view name, base::Variant value) {
    m_properties[base::upperCase(name)] = std::move(value);
}

void FakeLateBound::addMethod(std::string_view name, Method method) {
    m_methods[base::upperCase(name)] = std::move(method);
}

void FakeLateBound::failOn(std::string_view member, std::int32_t errorNumber) {
    m_failures[base::upperCase(member)] = errorNumber;
}

base::Variant FakeLateBound::get(std::string_view property) {
    return memberOf(m_properties, enter("get ", property));
}

void FakeLateBound::put(std::string_view property, const base::Variant& value) {
    memberOf(m_properties, enter("put ", property)) = value;
}

base::Variant FakeLateBound::call(std::string_view method, const std::vector<base::Variant>& arguments) {
    return memberOf(m_methods, enter("call ", method))(arguments);
}

std::string FakeLateBound::enter(std::string_view operation, std::string_view member) {
    m_operations.push_back(std::string(operation) + std::string(member));
    std::string key = base::upperCase(member);
    const auto failure = m_failures.find(key);
    if (failure != m_failures.end() && failure->second != 0) {
        throw base::RuntimeError(failure->second);
    }
    return key;
}

} // namespace fakes
