// A host's automation object, such as its globals object, with the members that a test gives it.
#pragma once

#include "base/late_bound.h"

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace fakes {

class FakeLateBound final : public base::LateBoundObject {
public:
    using Method = std::function<base::Variant(const std::vector<base::Variant>&)>;

    // Gives the object a member; an existing one of that name is replaced.
    void addProperty(std::string_view name, base::Variant value = {});
    void addMethod(std::string_view name, Method method);
    // Every use of `member` raises the number from now on (0: works again).
    void failOn(std::string_view member, std::int32_t errorNumber);

    base::Variant get(std::string_view property) override;
    void put(std::string_view property, const base::Variant& value) override;
    base::Variant call(std::string_view method, const std::vector<base::Variant>& arguments) override;

    // What was asked, oldest first: "get name", "put name", "call name", in the caller's spelling.
    [[nodiscard]] const std::vector<std::string>& operations() const { return m_operations; }

private:
    std::string enter(std::string_view operation, std::string_view member);

    std::map<std::string, base::Variant> m_properties; // by upper-cased name
    std::map<std::string, Method> m_methods;
    std::map<std::string, std::int32_t> m_failures;
    std::vector<std::string> m_operations;
};

} // namespace fakes
