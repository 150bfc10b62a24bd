// The fake that the late-bound contract asks for; the Windows tests dress it up as a host's automation object.
#pragma once

#include "base/runtime_error.h"
#include "fakes/fake_late_bound.h"

#include <memory>

namespace contracts {

inline std::shared_ptr<fakes::FakeLateBound> makeFakeHostObject() {
    auto object = std::make_shared<fakes::FakeLateBound>();
    object->addProperty("Text", std::string("C:\\QV\\"));
    object->addProperty("Flag", true);
    object->addProperty("Number", 12);
    object->addProperty("Real", 2.5);
    object->addProperty("Nothing_yet");
    object->addMethod("Join", [](const std::vector<base::Variant>& arguments) {
        return base::Variant(base::toText(arguments.at(0)) + "+" + base::toText(arguments.at(1)));
    });
    object->addMethod("Fail", [](const std::vector<base::Variant>&) -> base::Variant {
        throw base::RuntimeError(1234, "Host", "Host says no");
    });
    return object;
}

} // namespace contracts
